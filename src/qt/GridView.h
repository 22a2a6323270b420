// A table with the selection of a flex grid: a rectangle from the current cell to a selection end, moved by
// the mouse and the keys. It tells what the operator does and shows what it is told.
#pragma once

#include <QBasicTimer>
#include <QTableView>

namespace dravik::qt {

// Rows and columns of the table, from 0.
struct GridSelection {
    int row = 0;
    int column = 0;
    int rowEnd = 0;
    int columnEnd = 0;
};

class GridView : public QTableView {
    Q_OBJECT

  public:
    explicit GridView(QWidget* parent);

    void showSelection(const GridSelection& selection);
    // Widths by the headings and the first and last records; the rest is not looked at.
    void fitColumns();
    void selectAll() override;
    void setSelectionModel(QItemSelectionModel* selection) override;

  Q_SIGNALS:
    void selected(const dravik::qt::GridSelection& selection);
    // A heading was pressed with the left button, or by Ctrl+Enter in its column.
    void headingPressed(int column);
    // A mouse button was pressed on a cell (-1 outside; row -1 with a column is the heading). The menu key
    // counts as the right button on the selection's end.
    void pressed(Qt::MouseButton button, Qt::KeyboardModifiers modifiers, int row, int column,
                 QPoint viewPlace);
    void copyRequested();

  protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void select(GridSelection selection);
    bool moveByKey(QKeyEvent* event);
    void dragTo(QPoint place);

    GridSelection selection_;
    QBasicTimer dragging_;
    QPoint draggedTo_;
};

}  // namespace dravik::qt
