// The screen comes out as its arrangement says.
#include "Shown.h"
#include "qt/MainWindow.h"
#include "screen/context/Screen.h"

namespace dravik::test {

using namespace engine;
using namespace screen;
namespace {

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
