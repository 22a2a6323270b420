#include <QGuiApplication>
#include <QHeaderView>
#include <QSignalBlocker>
#include <string>

#include "qt/GridModel.h"
#include "qt/GridView.h"
#include "qt/Peer.h"
#include "qt/Peers.h"
#include "qt/QtConversions.h"

namespace dravik::qt {
namespace {

class GridPeer : public PeerOf<ui::Grid, GridView> {
  public:
    GridPeer(ui::Grid& model, GridView& view) : PeerOf(model, view), table_(new GridModel(model, &view)) {
        view.setModel(table_);
        view.setAccessibleDescription(
            QStringLiteral("Shift and the arrow keys select, Ctrl+Enter sorts by the current column"));
        connect(&view, &GridView::selected, this, [this](const GridSelection& selection) {
            showing_ = true;
            act([&] {
                model_.select(selection.row + 1, selection.column, selection.rowEnd + 1, selection.columnEnd);
            });
            showing_ = false;
        });
        connect(&view, &GridView::headingPressed, this, [this](int column) {
            const auto* header = view_.horizontalHeader();
            const QPoint place(header->sectionViewportPosition(column) + header->sectionSize(column) / 2,
                               header->height() / 2);
            press(ui::kLeftButton, QGuiApplication::keyboardModifiers(), 0, column, place);
        });
        connect(&view, &GridView::pressed, this,
                [this](Qt::MouseButton button, Qt::KeyboardModifiers modifiers, int row, int column,
                       QPoint place) {
                    // The heading is row 0; outside of the records both are -1.
                    press(buttonCode(button), modifiers, column < 0 ? -1 : row + 1, column, place);
                });
        connect(&view, &GridView::copyRequested, this,
                [this] { act([&] { model_.keyDown(ui::kKeyInsert, ui::kCtrlMask); }); });
    }

  protected:
    void show(ui::Change change) override {
        switch (change) {
            case ui::Change::Items: {
                const int columns = columns_;
                columns_ = model_.columns();
                table_->refill();
                if (columns != columns_ || !fitted_ || digits() > fittedDigits_) fit();
                showSelection();
                break;
            }
            case ui::Change::Appearance:
                Peer::show(change);
                table_->refill();
                if (!fitted_) fit();
                showSelection();
                break;
            case ui::Change::Selection:
                if (!showing_) showSelection();
                break;
            default:
                Peer::show(change);
        }
    }

    void letGo() override { table_->detach(); }

  private:
    void fit() {
        view_.fitColumns();
        fitted_ = table_->rowCount() > 0;
        fittedDigits_ = digits();
    }

    // Of the largest record number.
    std::size_t digits() const { return std::to_string(table_->rowCount()).size(); }

    void showSelection() {
        view_.showSelection(
            {model_.row() - 1, model_.column(), model_.rowSelection() - 1, model_.columnSelection()});
    }

    void press(int button, Qt::KeyboardModifiers modifiers, int row, int column, QPoint viewPlace) {
        act([&] { model_.setMouseCell(row, column); });
        fireMouseDown(button, modifiers, viewPlace);
    }

    GridModel* table_;
    int columns_ = -1;
    bool fitted_ = false;
    std::size_t fittedDigits_ = 0;
    bool showing_ = false;
};

}  // namespace

QWidget* make(ui::Grid& model, QWidget* parent) {
    return viewWith<GridPeer>(model, parent);
}

}  // namespace dravik::qt
