// What the program's window does in Qt beyond what it does in every window system.
#include "qt/support/WindowFixture.h"

#include <QClipboard>
#include <QScreen>

#include "qt/Theme.h"

namespace dravik::test {
namespace {

using WindowTest = WindowFixture;

TEST_F(WindowTest, ComesUpWithinTheScreenWithTheFocusWhereTheNextKeyBelongs) {
    EXPECT_EQ(window.focusWidget(), &view("cmdSelectFont")) << "nothing can be included yet";
    makeFont();
    EXPECT_EQ(window.focusWidget(), &view("txtSampleInput"));

    // A screen of less than the window's own wish, as a large one with a display scale of 2 is.
    QSettings().clear();
    MainWindow second{trainer, platform};
    const QSize room = second.screen()->availableGeometry().size();
    EXPECT_LT(second.width(), room.width());
    EXPECT_LT(second.height(), room.height());
}

TEST_F(WindowTest, AnImageOfTheClipboardIsOpenedWhereverTheFocusIs) {
    view<QLineEdit>("txtCharSet").setFocus();
    QImage picture(60, 40, QImage::Format_RGB32);
    picture.fill(Qt::white);
    QGuiApplication::clipboard()->setImage(picture);
    QTest::keyClick(&view("txtCharSet"), Qt::Key_V, Qt::ControlModifier);
    ASSERT_EQ(trainer.parts().count(), 1);
    EXPECT_EQ(trainer.parts().image().width(), 60);
    QGuiApplication::clipboard()->setText("words");
    view<QLineEdit>("txtSampleInput").setFocus();
    QTest::keyClick(&view("txtSampleInput"), Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(trainer.parts().count(), 1);
    EXPECT_EQ(view<QLineEdit>("txtSampleInput").text(), "words");
}

TEST_F(WindowTest, FieldsAndMarksAreSeenInEveryTheme) {
    for (const char* theme : {"themeDark", "themeLight", "themeSystem"}) {
        action(theme).trigger();
        settle();
        const QPalette palette = window.palette();
        const QColor ground = palette.color(QPalette::Window);
        for (const char* name : {"txtSampleInput", "chkCase", "cboTimeout", "reading"}) {
            const QImage shown = view(name).grab().toImage();
            double most = 1;
            // Down the left side, where the frame is.
            for (int x = 0; x < 6; ++x)
                most = std::max(most, contrast(shown.pixelColor(x, shown.height() / 2), ground));
            EXPECT_GE(most, 3) << name << " with " << theme;
        }
        EXPECT_GE(contrast(warningColor(palette), ground), 3) << theme;
        EXPECT_GE(contrast(palette.color(QPalette::Text), palette.color(QPalette::Base)), 7) << theme;
    }
}

}  // namespace
}  // namespace dravik::test
