#include "qt/GridView.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <algorithm>

#include "qt/Peer.h"
#include "ui/KeyMove.h"

namespace dravik::qt {

constexpr int kRowPadding = 6;
constexpr int kColumnPadding = 14;
constexpr int kLeastColumnWidth = 34;
constexpr int kProbedRows = 40;
constexpr int kDragStep = 50;  // milliseconds

GridView::GridView(QWidget* parent) : QTableView(parent) {
    setSelectionMode(
        QAbstractItemView::NoSelection);  // the selection is the grid's own, shown by showSelection()
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setWordWrap(false);
    setTabKeyNavigation(false);
    setCornerButtonEnabled(false);
    setAutoScroll(false);  // what is in view stays, but for what the operator goes to
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setMinimumSectionSize(1);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + kRowPadding);
    horizontalHeader()->setSectionsClickable(true);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->viewport()->installEventFilter(this);
    connect(horizontalHeader(), &QHeaderView::sectionPressed, this, &GridView::headingPressed);
}

// The headings ask of each column whether all of its cells are selected, row by row, which takes long in a
// long table; they show no selection.
void GridView::setSelectionModel(QItemSelectionModel* selection) {
    QTableView::setSelectionModel(selection);
    for (QHeaderView* header : {horizontalHeader(), verticalHeader()})
        header->setSelectionModel(new QItemSelectionModel(model(), header));
}

void GridView::showSelection(const GridSelection& selection) {
    selection_ = selection;
    if (!model() || model()->rowCount() == 0 || model()->columnCount() == 0) return;
    const auto first = model()->index(std::min(selection.row, selection.rowEnd),
                                      std::min(selection.column, selection.columnEnd));
    const auto last = model()->index(std::max(selection.row, selection.rowEnd),
                                     std::max(selection.column, selection.columnEnd));
    const auto end = model()->index(selection.rowEnd, selection.columnEnd);
    if (!first.isValid() || !last.isValid()) return;
    selectionModel()->setCurrentIndex(end, QItemSelectionModel::NoUpdate);
    selectionModel()->select(QItemSelection(first, last), QItemSelectionModel::ClearAndSelect);
}

void GridView::fitColumns() {
    if (!model()) return;
    const int rows = model()->rowCount();
    const QFontMetrics metrics = fontMetrics();
    for (int column = 0; column < model()->columnCount(); ++column) {
        int wide = metrics.horizontalAdvance(model()->headerData(column, Qt::Horizontal).toString());
        const auto measure = [&](int row) {
            wide = std::max(wide, metrics.horizontalAdvance(model()->index(row, column).data().toString()));
        };
        for (int row = 0; row < std::min(rows, kProbedRows); ++row) measure(row);
        if (rows > 0) measure(rows - 1);
        setColumnWidth(column, std::max(wide + kColumnPadding, kLeastColumnWidth));
    }
}

void GridView::select(GridSelection selection) {
    if (!model() || model()->rowCount() == 0 || model()->columnCount() == 0) return;
    showSelection(selection);
    scrollTo(model()->index(selection.rowEnd, selection.columnEnd));
    Q_EMIT selected(selection);
}

void GridView::selectAll() {
    if (!model() || model()->rowCount() == 0 || model()->columnCount() == 0) return;
    // What is in view stays there.
    showSelection({0, 0, model()->rowCount() - 1, model()->columnCount() - 1});
    Q_EMIT selected(selection_);
}

void GridView::mousePressEvent(QMouseEvent* event) {
    const QModelIndex cell = indexAt(event->position().toPoint());
    if (event->button() == Qt::LeftButton && cell.isValid()) {
        if (event->modifiers() & Qt::ShiftModifier)
            select({selection_.row, selection_.column, cell.row(), cell.column()});
        else
            select({cell.row(), cell.column(), cell.row(), cell.column()});
    }
    Q_EMIT pressed(event->button(), event->modifiers(), cell.row(), cell.column(),
                   viewport()->mapTo(this, event->position().toPoint()));
}

void GridView::mouseMoveEvent(QMouseEvent* event) {
    if (!(event->buttons() & Qt::LeftButton) || !model() || model()->rowCount() == 0) return;
    dragTo(event->position().toPoint());
}

void GridView::dragTo(QPoint place) {
    const QRect area = viewport()->rect();
    // Past an edge the next row or column comes into view, and goes on doing so while the pointer rests.
    draggedTo_ = place;
    if (area.contains(place))
        dragging_.stop();
    else if (!dragging_.isActive())
        dragging_.start(kDragStep, this);
    if (place.y() > area.bottom()) verticalScrollBar()->triggerAction(QAbstractSlider::SliderSingleStepAdd);
    if (place.y() < area.top()) verticalScrollBar()->triggerAction(QAbstractSlider::SliderSingleStepSub);
    const QPoint inside(std::clamp(place.x(), area.left(), area.right()),
                        std::clamp(place.y(), area.top(), area.bottom()));
    const int row = rowAt(inside.y()) < 0 ? model()->rowCount() - 1 : rowAt(inside.y());
    const int column = columnAt(inside.x()) < 0 ? model()->columnCount() - 1 : columnAt(inside.x());
    if (row != selection_.rowEnd || column != selection_.columnEnd)
        select({selection_.row, selection_.column, row, column});
}

void GridView::timerEvent(QTimerEvent* event) {
    if (event->timerId() != dragging_.timerId()) return QTableView::timerEvent(event);
    if (model() && model()->rowCount() > 0)
        dragTo(draggedTo_);
    else
        dragging_.stop();
}

void GridView::mouseReleaseEvent(QMouseEvent* event) {
    dragging_.stop();
    event->accept();
}

void GridView::mouseDoubleClickEvent(QMouseEvent* event) {
    mousePressEvent(event);
}

bool GridView::moveByKey(QKeyEvent* event) {
    // In the order of the keys' moves.
    constexpr CursorAction kActions[] = {MoveLeft,   MoveRight,    MoveUp,   MoveDown,
                                         MovePageUp, MovePageDown, MoveHome, MoveEnd};
    const auto move = ui::keyMove(virtualKey(event->key()));
    if (!move) return false;
    const CursorAction action = kActions[static_cast<std::size_t>(*move)];
    QModelIndex to = moveCursor(action, event->modifiers() & ~Qt::ShiftModifier);
    if (!to.isValid()) return true;
    // With Ctrl an arrow goes to the end of its direction.
    if (event->modifiers() & Qt::ControlModifier) {
        if (action == MoveLeft) to = to.siblingAtColumn(0);
        if (action == MoveRight) to = to.siblingAtColumn(model()->columnCount() - 1);
        if (action == MoveUp) to = model()->index(0, to.column());
        if (action == MoveDown) to = model()->index(model()->rowCount() - 1, to.column());
    }
    if (event->modifiers() & Qt::ShiftModifier)
        select({selection_.row, selection_.column, to.row(), to.column()});
    else
        select({to.row(), to.column(), to.row(), to.column()});
    return true;
}

void GridView::keyPressEvent(QKeyEvent* event) {
    const bool menu = event->key() == Qt::Key_Menu ||
                      (event->key() == Qt::Key_F10 && event->modifiers() & Qt::ShiftModifier);
    if (event->modifiers() & Qt::AltModifier) {
        event->ignore();
    } else if (menu) {
        const QModelIndex cell = model()->index(selection_.rowEnd, selection_.columnEnd);
        const QPoint place = cell.isValid() ? visualRect(cell).center() : viewport()->rect().center();
        Q_EMIT pressed(Qt::RightButton, Qt::NoModifier, cell.row(), cell.column(),
                       viewport()->mapTo(this, place));
    } else if (event->matches(QKeySequence::SelectAll)) {
        selectAll();
    } else if (event->matches(QKeySequence::Copy) && event->key() != Qt::Key_Insert) {
        // Ctrl+Insert is a copy already; the platform's own key for it becomes one.
        Q_EMIT copyRequested();
    } else if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) &&
               event->modifiers() & Qt::ControlModifier) {
        Q_EMIT headingPressed(selection_.columnEnd);
    } else if (!moveByKey(event)) {
        event->ignore();
    }
}

bool GridView::eventFilter(QObject* watched, QEvent* event) {
    if (watched == horizontalHeader()->viewport() && event->type() == QEvent::MouseButtonPress) {
        const auto* mouse = static_cast<const QMouseEvent*>(event);
        if (mouse->button() == Qt::RightButton) {
            const QPoint place = mouse->position().toPoint();
            Q_EMIT pressed(Qt::RightButton, mouse->modifiers(), -1, horizontalHeader()->logicalIndexAt(place),
                           horizontalHeader()->viewport()->mapTo(this, place));
            return true;
        }
    }
    return QTableView::eventFilter(watched, event);
}

}  // namespace dravik::qt
