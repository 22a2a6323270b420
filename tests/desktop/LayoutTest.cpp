// Forms come out as their arrangement says: places, stretches, hidden controls, tab order.
#include <QLabel>

#include "ShownForm.h"
#include "desktop/CellView.h"
#include "desktop/MainWindow.h"
#include "shell/Screen.h"
#include "widgets/Label.h"
#include "widgets/TextBox.h"

namespace dravik {
namespace {

TEST(LayoutBuilder, SpareLengthGoesToWhoAsksForIt) {
    TextBox a("a");
    TextBox b("b");
    Button c("c", "C");
    ShownForm shown(column({row({item(a).stretched(), item(b).stretched(2), item(c)}), space()}), 600, 200);
    const int rest = shown.view("c").width();
    EXPECT_NEAR(shown.view("b").width(), 2 * shown.view("a").width(), 4);
    b.setVisible(false);
    settle();
    EXPECT_EQ(shown.view("c").width(), rest);
    EXPECT_GT(shown.view("a").width(), 400);  // a hidden control takes no room
    EXPECT_LT(shown.view("a").height(), 60);
}

TEST(LayoutBuilder, TabFollowsTheTreeAndCellsAreOneStop) {
    TextBox before("before");
    TextBox after("after");
    std::vector<std::unique_ptr<Label>> cells;
    std::vector<std::pair<Widget*, Place>> places;
    for (int i = 0; i < 6; ++i) {
        cells.push_back(std::make_unique<Label>("cell(" + std::to_string(i) + ")", std::to_string(i)));
        cells.back()->setCell(true);
        places.push_back({cells.back().get(), {150 + 450 * (i % 3), 150 + 450 * (i / 3), 345, 345}});
    }
    ShownForm shown(column({item(before), fixed(std::move(places)), item(after), space()}));
    EXPECT_EQ(shown.view("cell(4)").geometry(), QRect(40, 40, 23, 23));

    shown.view("before").setFocus();
    QTest::keyClick(qApp->focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(qApp->focusWidget()->objectName(), "cell(0)");
    QTest::keyClick(qApp->focusWidget(), Qt::Key_Right);
    QTest::keyClick(qApp->focusWidget(), Qt::Key_Down);
    EXPECT_EQ(qApp->focusWidget()->objectName(), "cell(4)");
    QTest::keyClick(qApp->focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(qApp->focusWidget()->objectName(), "after");
    QTest::keyClick(qApp->focusWidget(), Qt::Key_Backtab);
    EXPECT_EQ(qApp->focusWidget()->objectName(), "cell(4)");
}

TEST(LayoutBuilder, TheWholeScreenFitsASmallWindow) {
    Screen screen;
    FormPage page(screen.form, nullptr);
    EXPECT_LE(page.minimumSizeHint().width(), 640);
    EXPECT_LE(page.minimumSizeHint().height(), 660);
    page.resize(page.minimumSizeHint());
    page.show();
    settle();
    // Nothing hangs over the edge of what it stands in, and every control has room for itself.
    for (const QWidget* view : page.findChildren<QWidget*>()) {
        if (!view->isVisible() || view->objectName().isEmpty() || view->objectName().startsWith("qt_"))
            continue;
        EXPECT_TRUE(view->parentWidget()->rect().contains(view->geometry()))
            << view->objectName().toStdString();
        EXPECT_GE(view->width(), view->minimumSizeHint().width()) << view->objectName().toStdString();
    }
}

}  // namespace
}  // namespace dravik
