// A cell of the character overview or of a feature array: a flat square with a border, one short bold or
// plain text and its own back colour. Cells that stand together form one stop of the Tab key; arrow keys move
// between them.
#pragma once

#include <QWidget>
#include <vector>

#include "ui/Color.h"

namespace dravik::qt {

class CellGroup;

class CellView : public QWidget {
    Q_OBJECT

  public:
    explicit CellView(QWidget* parent);

    void setCaption(const QString& caption, const QString& figure);
    void setColors(ui::Color background, ui::Color foreground);
    const QString& caption() const noexcept { return caption_; }

    QSize sizeHint() const override;

    CellGroup* group = nullptr;

  Q_SIGNALS:
    // The keyboard focus came to the cell, or its menu was asked for by key.
    void focused();
    void menuRequested();

  protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

  private:
    QString caption_;
    QString figure_;
    ui::Color background_ = ui::kScrollBarColor;
    ui::Color foreground_ = ui::kWindowTextColor;
};

class CellGroup : public QObject {
  public:
    explicit CellGroup(QObject* parent) : QObject(parent) {}

    void add(CellView& cell);
    // The Tab key comes to this cell from now on.
    void setTabStop(CellView& cell);
    // The nearest cell in the direction of an arrow key, the first or last one for Home and End; nothing when
    // the key is another one or no cell stands there.
    CellView* neighbour(const CellView& from, int key) const;

  private:
    std::vector<CellView*> cells_;
};

}  // namespace dravik::qt
