// Forms come out as their arrangement says: places, stretches, hidden controls, tab order.
#include "Shown.h"
#include "qt/MainWindow.h"
#include "screen/context/Screen.h"
#include "ui/LayoutGeometry.h"

namespace dravik::test {

using namespace engine;
using namespace screen;
namespace {

TEST(FormLayout, FollowsWhatItsControlsAskForUntilTheyGo) {
    Button a("a", "A");
    TextBox b("b");
    Shown shown(row({item(a), item(b).stretched()}), 600, 100);
    const int least = shown.page->minimumSizeHint().width();
    a.setCaption("A caption that needs much more room than the one before it");
    settle();
    EXPECT_GT(shown.page->minimumSizeHint().width(), least + 100);
    EXPECT_EQ(shown.view("b").x(), shown.view("a").geometry().right() + 1 + kSpacing);
    EXPECT_EQ(shown.view("b").geometry().right() + 1, 600 - kMargin);

    shown.page->setLayoutDirection(Qt::RightToLeft);
    settle();
    EXPECT_EQ(shown.view("b").x(), kMargin);
    EXPECT_EQ(shown.view("a").geometry().right() + 1, 600 - kMargin);

    const QSize wanted = shown.page->sizeHint();
    shown.page->detach();
    shown.page->resize(900, 100);
    settle();
    EXPECT_EQ(shown.view("b").x(), kMargin);
    EXPECT_EQ(shown.view("a").geometry().right() + 1, 600 - kMargin) << "nothing is laid out any more";
    EXPECT_EQ(shown.page->sizeHint(), wanted) << "a window that closes does not collapse first";
}

TEST(FormLayout, TheWholeScreenFitsASmallWindow) {
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
}  // namespace dravik::test
