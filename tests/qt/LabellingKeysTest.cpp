// How many keys it takes to teach a font, from the start of the program on: labels of a fixed format, worked
// by the keyboard alone in the real window. Every key that is pressed is counted.
#include <QDir>
#include <QImage>
#include <QPainter>
#include <QTimer>

#include "base/Text.h"
#include "qt/support/WindowFixture.h"

namespace dravik::test {
namespace {

struct Label {
    QString first, second;

    std::string text() const { return utf8(QString(first + second).remove(QLatin1Char(' '))); }
};

struct Random : std::minstd_rand {
    using std::minstd_rand::operator();
    int operator()(int least, int most) {
        return least + static_cast<int>((*this)() % unsigned(most - least + 1));
    }
};

Label labelOf(int number, Random& digits) {
    return {QStringLiteral("LOT %1%2").arg(QChar('A' + number % 4)).arg(digits(1000, 9999)),
            QStringLiteral("EXP %1-%2-%3")
                .arg(digits(2026, 2031))
                .arg(digits(1, 12), 2, 10, QLatin1Char('0'))
                .arg(digits(1, 28), 2, 10, QLatin1Char('0'))};
}

// Print on a part as a camera sees it: tilted, out of the middle, with noise.
QImage photographed(const Label& label, Random& between) {
    QImage image(640, 480, QImage::Format_Grayscale8);
    image.fill(between(170, 210));
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    QFont font(QStringLiteral("DejaVu Sans Mono"));
    font.setPixelSize(between(42, 46));
    painter.setFont(font);
    const int ink = between(30, 60);
    painter.setPen(QColor(ink, ink, ink));
    painter.translate(320 + between(-20, 20), 240 + between(-30, 30));
    painter.rotate(between(-20, 20) / 10.0);
    painter.drawText(QRectF(-220, -60, 440, 60), Qt::AlignLeft, label.first);
    painter.drawText(QRectF(-220, 10, 440, 60), Qt::AlignLeft, label.second);
    painter.end();
    std::normal_distribution<double> noise(0, 5);
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            uchar& pixel = image.scanLine(y)[x];
            pixel = static_cast<uchar>(std::clamp(pixel + noise(between), 0.0, 255.0));
        }
    return image;
}

class LabellingKeys : public WindowFixture {
  protected:
    LabellingKeys() {
        QSettings().setValue(QStringLiteral("window/folder"), folder.path());
        trainer.setPatience(kPatience);
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    }

    void draw(int count) {
        Random random;
        QDir().mkpath(parts());
        for (int i = 0; i < count; ++i) {
            labels.push_back(labelOf(i, random));
            photographed(labels.back(), random)
                .save(parts() + QStringLiteral("/part_%1.png").arg(i, 3, 10, QLatin1Char('0')));
        }
    }
    QString parts() const { return folder.filePath(QStringLiteral("line3-labels")); }

    // Wherever the focus is, as the window system would send it.
    QWidget& focus() {
        QWidget* top = QApplication::activeModalWidget();
        if (!top) top = &window;
        // A window manager does so when a dialog closes.
        if (!top->isActiveWindow()) {
            top->activateWindow();
            EXPECT_TRUE(QTest::qWaitForWindowActive(top));
        }
        return top->focusWidget() ? *top->focusWidget() : *top;
    }
    void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        ++keys;
        QTest::keyClick(&focus(), static_cast<Qt::Key>(key), modifiers);
    }
    void type(const QString& text) {
        for (const QChar one : text) {
            ++keys;
            QTest::keyClick(&focus(), one.toLatin1());
        }
    }
    void openFolder() {
        QTimer::singleShot(200, [this] {
            type(QStringLiteral("line3-labels"));
            press(Qt::Key_Return);
        });
        press(Qt::Key_O, Qt::ControlModifier | Qt::ShiftModifier);
        ASSERT_EQ(trainer.parts().count(), static_cast<int>(labels.size()));
    }
    void newFont() {
        dialogs.expect(QStringLiteral("dlgFontNewWindow"), [this](QWidget&) {
            type(QStringLiteral("lot"));
            press(Qt::Key_Return);
        });
        press(Qt::Key_N, Qt::ControlModifier);
        ASSERT_EQ(trainer.control().selectedFont(), "lot");
    }
    void waitForProposal() {
        ASSERT_TRUE(waitUntil([&] { return !trainer.isWorking(); }));
    }
    // Enter answers a question with Yes.
    int allKeys() const { return keys + static_cast<int>(dialogs.messages().size()); }
    // Enter, and where the proposal is wrong the right character, until the image is included.
    void include(const Label& label) {
        waitForProposal();
        const int image = trainer.parts().current(), before = keys;
        const auto right = characters(label.text());
        ASSERT_EQ(trainer.preview().size(), right.size()) << image;
        while (trainer.parts().current() == image && !isLast()) {
            ASSERT_LT(keys - before, 60) << image << ": " << box().text().toStdString();
            // What an operator sees: what he is led to, and, at a glance at the text, what is wrong
            // elsewhere.
            const int at = trainer.labelling().pointedAt();
            if (at >= 0 && trainer.preview()[static_cast<std::size_t>(at)].label !=
                               right[static_cast<std::size_t>(at)]) {
                type(qtText(right[static_cast<std::size_t>(at)]));
                ++corrected;
            } else if (trainer.labelling().doubts() == 0 && utf8(box().text()) != label.text()) {
                correctText(right);
            } else {
                press(Qt::Key_Return);
            }
        }
    }
    // To the first wrong character by the arrow keys.
    void correctText(const std::vector<std::string>& right) {
        press(Qt::Key_Home);
        std::size_t at = 0;
        for (; trainer.preview()[at].label == right[at]; ++at) press(Qt::Key_Right);
        press(Qt::Key_Delete);
        type(qtText(right[at]));
        ++corrected;
    }
    bool isLast() {
        return trainer.labelling().state(trainer.parts().path(trainer.parts().current())) ==
               PartState::Included;
    }
    void learn() {
        press(Qt::Key_L, Qt::ControlModifier);
        ASSERT_TRUE(waitUntil([&] { return !trainer.isTraining(); }, 120000));
        press(Qt::Key_S, Qt::ControlModifier);
        waitForProposal();
    }
    QLineEdit& box() { return view<QLineEdit>("txtSampleInput"); }
    std::string read() const {
        std::string text;
        for (const auto& line : trainer.reading().lines)
            for (const auto& one : line) text += one.character;
        return text;
    }

    DialogScript dialogs;
    std::vector<Label> labels;
    int keys = 0, corrected = 0;
};

// As many as tools/count-keys.sh asks for.
TEST_F(LabellingKeys, EightImagesMakeAFontThatReadsTheNinthAndLaterOnesTakeTwoKeysEach) {
    constexpr int kFirst = 5;
    const int count = qEnvironmentVariable("DRAVIK_LABELLED_IMAGES", "25").toInt();
    draw(count);
    openFolder();
    newFont();
    dialogs.answerOthers(QStringLiteral("Yes"));  // to characters that the font does not have yet
    int afterFirst = 0, notFound = 0;
    for (int i = 0; i < count; ++i) {
        const Label& label = labels[static_cast<std::size_t>(i)];
        if (i == kFirst) {
            learn();
            afterFirst = allKeys();
        }
        waitForProposal();
        if (i == 8) {
            std::cout << "8 images: " << allKeys() << " keys, no click\n";
            EXPECT_EQ(read(), label.text());
            EXPECT_LE(allKeys(), 70);
            EXPECT_EQ(notFound, 0);
        }
        if (trainer.preview().size() == characterCount(label.text())) {
            include(label);
        } else {
            ++notFound;
            press(Qt::Key_PageDown);
        }
    }
    const int later = allKeys() - afterFirst;
    std::cout << count << " images: " << allKeys() << " keys, " << later << " of them for the last "
              << count - kFirst << ", no click; " << corrected << " characters corrected, " << notFound
              << " images without all of their characters\n";
    EXPECT_LE(later, 2 * (count - kFirst));
    EXPECT_LE(notFound, count / 10);
    EXPECT_TRUE(dialogs.problems().isEmpty()) << utf8(dialogs.problems().join(QLatin1Char(';')));
}

// The region by keys, while a text is proposed anew at each of them.
TEST_F(LabellingKeys, KeysStayWithTheImageUntilItsModeEnds) {
    draw(1);
    openFolder();
    newFont();
    waitForProposal();
    const auto press = [&](std::initializer_list<int> pressed, Qt::KeyboardModifiers modifiers = {}) {
        for (const int key : pressed) {
            LabellingKeys::press(key, modifiers);
            waitForProposal();
        }
    };
    press({Qt::Key_R}, Qt::ControlModifier);
    press({Qt::Key_Return, Qt::Key_Up, Qt::Key_Up});
    const auto& region = window.model().view.region().region();
    ASSERT_TRUE(region);
    const float top = region->centreY;
    press({Qt::Key_Down});
    EXPECT_GT(region->centreY, top);
    press({Qt::Key_Delete, Qt::Key_Escape});
    EXPECT_EQ(window.focusWidget(), &box());
}

}  // namespace
}  // namespace dravik::test
