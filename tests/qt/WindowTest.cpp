// The program's window as a whole: a font is made, taught, learnt, saved and reads, all through what the
// operator sees.
#include "qt/support/WindowFixture.h"

#include <QClipboard>
#include <QDesktopServices>
#include <QDialog>
#include <QDir>
#include <QDragEnterEvent>
#include <QListView>
#include <QListWidget>
#include <QMimeData>
#include <QScreen>
#include <QToolButton>
#include <sstream>

#include "drivers/ScriptedSession.h"
#include "drivers/qt/QtWindowDriver.h"
#include "qt/PartView.h"
#include "qt/ReadingView.h"
#include "qt/Theme.h"

namespace dravik::test {
namespace {

const std::string kParts = DRAVIK_SOURCE_DIR "/data/parts/";

class WindowTest : public WindowFixture {
  protected:
    void session(const std::vector<std::string>& paths) {
        QtWindowDriver driver(window);
        ScriptedSession(driver, trainer, folder.path().toStdString(), told).run(paths);
    }
    std::ostringstream told;
};

TEST_F(WindowTest, TeachesLearnsSavesAndReads) {
    ASSERT_NO_THROW(
        session({kParts + "rendered_charset/hack_000.png", kParts + "rendered_charset/hack_001.png",
                 kParts + "rendered_charset/hack_002.png", kParts + "rendered_lines/hack_000.png"}))
        << told.str();
    EXPECT_EQ(view<ReadingView>("reading").toPlainText(), "EXP2026/07/26");
    EXPECT_EQ(window.windowTitle(), "demo - Dravik Trainer");
    EXPECT_TRUE(QFile::exists(folder.filePath("Jobs/Fonts/demo.nnd")));
    EXPECT_FALSE(action("fontSave").isEnabled());
    EXPECT_TRUE(action("fontLearn").isEnabled());

    // A changed font: the title says so, and closing asks. Cancel and Escape stay; what is discarded leaves
    // the file as it was.
    view<QLineEdit>("txtSampleInput").setFocus();
    QTest::keyClicks(&view("txtSampleInput"), "EXP2026/07/26");
    QTest::keyClick(&view("txtSampleInput"), Qt::Key_Return);
    EXPECT_EQ(trainer.control().screen().sbr.panel("Message").text(), "13 samples included.");
    EXPECT_EQ(window.windowTitle(), "demo* - Dravik Trainer");
    view<QToolButton>("tlbChars.Array").click();
    const auto childForms = [&] {
        int count = 0;
        for (const auto* dialog : window.findChildren<QDialog*>()) count += dialog->isVisible() ? 1 : 0;
        return count;
    };
    EXPECT_EQ(childForms(), 1);
    DialogScript script;
    script.expect("closingFormWindow",
                  [&](QWidget& form) { QTest::keyClick(form.focusWidget(), Qt::Key_Escape); });
    EXPECT_FALSE(window.close());
    EXPECT_TRUE(script.finished());
    EXPECT_EQ(childForms(), 1) << "the child form is still open";
    QApplication::setActiveWindow(&window);
    view("txtSampleInput").setFocus();
    QTest::keyClick(&view("txtSampleInput"), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(window.windowTitle(), "demo* - Dravik Trainer") << "it is the typing that it takes back there";
    view("partView").setFocus();
    QTest::keyClick(&view("partView"), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(window.windowTitle(), "demo - Dravik Trainer");
    EXPECT_EQ(action("redo").text(), "&Redo include of 13 samples");
    action("redo").trigger();
    script.expect("closingFormWindow", [&](QWidget& form) {
        EXPECT_EQ(form.findChild<QListWidget*>("lbFonts")->item(0)->text(), "demo");
        form.findChild<QPushButton*>("cmdDiscard")->click();
    });
    EXPECT_TRUE(window.close());
    EXPECT_TRUE(script.finished());
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(childForms(), 0);
    EXPECT_EQ(trainer.tool().summary("demo").samples, 3 * 74);
}

TEST_F(WindowTest, ImagesAreOpenedDroppedLeafedThroughAndClosed) {
    EXPECT_FALSE(action("next").isEnabled());
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(QString::fromStdString(kParts + "rendered_lines"))});
    QDragEnterEvent enter(QPoint(700, 300), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&window, &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop(QPointF(700, 300), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&window, &drop);
    ASSERT_EQ(trainer.parts().count(), 48);
    EXPECT_EQ(trainer.parts().current(), 0);
    EXPECT_TRUE(view<QLabel>("partName").text().startsWith("1 of 48"));

    action("next").trigger();
    QTest::keyClick(&view("partView"), Qt::Key_PageDown);
    EXPECT_EQ(trainer.parts().current(), 2);
    EXPECT_EQ(view<QListView>("thumbnails").currentIndex().row(), 2);
    auto& strip = view<QListView>("thumbnails");
    QTest::mouseClick(strip.viewport(), Qt::LeftButton, {},
                      strip.visualRect(strip.model()->index(1, 0)).center());
    EXPECT_EQ(trainer.parts().current(), 1);
    view("txtSampleInput").setFocus();
    QTest::keyClick(&view("txtSampleInput"), Qt::Key_PageUp);
    EXPECT_EQ(trainer.parts().current(), 0);

    action("actualSize").trigger();
    EXPECT_DOUBLE_EQ(window.model().view.scale(), 1 / window.devicePixelRatioF());
    action("closeAll").trigger();
    EXPECT_EQ(trainer.parts().count(), 0);
    EXPECT_FALSE(action("zoomIn").isEnabled());

    window.open({folder.filePath("absent.png").toStdString()});
    EXPECT_TRUE(view("problems").isVisible());
    EXPECT_TRUE(view<QLabel>("problemText").text().contains("absent.png"));
    window.open({kParts + "rendered_lines/hack_000.png"});
    EXPECT_FALSE(view("problems").isVisible());
}

TEST_F(WindowTest, AMismatchIsVisibleBeforeInclude) {
    window.open({kParts + "rendered_lines/hack_000.png"});
    auto& part = view<PartView>("partView");
    const auto pixels = [&](QColor color) {
        const QImage image = part.grab().toImage();
        int count = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                if (image.pixelColor(x, y) == color) ++count;
        return count;
    };
    const QColor warning(0xD8, 0x43, 0x15);
    const auto setText = [&](const char* text) {
        trainer.control().screen().sample.txtSampleInput.setText(text);
    };
    EXPECT_TRUE(view<QLabel>("previewText").text().startsWith("13 characters found, text proposed"));
    EXPECT_EQ(pixels(warning), 0);
    setText("EXP2026/07/2");
    EXPECT_TRUE(view<QLabel>("previewText").text().contains("13 characters found, 12 typed"));
    EXPECT_GT(pixels(warning), 20);
    setText("EXP2026/07/26");
    EXPECT_EQ(pixels(warning), 0);
    setText("EXP2026/07/266");
    EXPECT_GT(pixels(warning), 20);
}

TEST_F(WindowTest, ASmallWindowShowsEverythingThatMatters) {
    window.resize(1024, 700);
    window.open({kParts + "rendered_lines/hack_000.png"});
    settle();
    EXPECT_EQ(window.size(), QSize(1024, 700));
    for (const char* name : {"cmdSelectFont", "cmdInclude", "cmdRevert", "lblChar(73)", "sbr.Message",
                             "partView", "reading", "thumbnails"}) {
        auto& shown = view(name);
        EXPECT_TRUE(window.rect().contains(QRect(shown.mapTo(&window, QPoint(0, 0)), shown.size()))) << name;
        EXPECT_FALSE(shown.visibleRegion().isEmpty()) << name;
    }
    EXPECT_GT(view("partView").width(), 330);
}

TEST_F(WindowTest, ComesUpWithinTheScreenWithTheFocusWhereTheNextKeyBelongs) {
    EXPECT_EQ(window.focusWidget(), &view("cmdSelectFont")) << "nothing can be included yet";
    DialogScript script;
    script.expect("dlgFontManagerWindow", [&](QWidget& manager) {
        DialogScript inner;
        inner.expect("dlgFontNewWindow", [&](QWidget& form) {
            QTest::keyClicks(form.focusWidget(), "one");
            QTest::keyClick(form.focusWidget(), Qt::Key_Return);
        });
        manager.findChild<QPushButton*>("cmdNewFont")->click();
        EXPECT_TRUE(inner.finished());
        EXPECT_EQ(manager.focusWidget()->objectName(), "lbFonts");
        QTest::keyClick(manager.focusWidget(), Qt::Key_Return);
    });
    QTest::keyClick(window.focusWidget(), Qt::Key_Return);
    EXPECT_TRUE(script.finished());
    settle();
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

// Takes the pages that the system's browser would be given.
class Browser : public QObject {
    Q_OBJECT
  public:
    Browser() { QDesktopServices::setUrlHandler(QStringLiteral("file"), this, "show"); }
    ~Browser() override { QDesktopServices::unsetUrlHandler(QStringLiteral("file")); }
    QList<QUrl> shown;

  public Q_SLOTS:
    void show(const QUrl& url) { shown << url; }
};

// Where the package has the guide, seen from the program.
TEST_F(WindowTest, HelpShowsTheInstalledGuide) {
    Browser browser;
    const QDir share(QCoreApplication::applicationDirPath() + "/../share");
    ASSERT_FALSE(share.exists());
    ASSERT_TRUE(QDir().mkpath(share.filePath("doc/dravik-trainer/html")));
    const QString guide = share.filePath("doc/dravik-trainer/html/operator-guide.html");
    QFile(guide).open(QIODevice::WriteOnly);
    action("guide").trigger();
    QDir(share).removeRecursively();
    ASSERT_EQ(browser.shown.size(), 1);
    EXPECT_EQ(browser.shown[0].toLocalFile(), QDir::cleanPath(guide));
}

}  // namespace
}  // namespace dravik::test

#include "WindowTest.moc"
