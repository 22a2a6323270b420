// The program's window of Qt for the cases of every window system.
#pragma once

#include <QDragEnterEvent>
#include <QListView>
#include <QMimeData>

#include "WindowFixture.h"
#include "drivers/qt/QtWindowDriver.h"
#include "program/Press.h"
#include "qt/ReadingView.h"

namespace dravik::test {

class OpenedProgram : public WindowFixture {
  protected:
    static constexpr char kProblemText[] = "problemText";

    Trainer& trainer() { return WindowFixture::trainer; }
    std::string path(const char* name) const { return utf8(folder.filePath(QLatin1String(name))); }
    std::string title() const { return utf8(window.windowTitle()); }
    std::string text(const char* name) {
        if (auto* reading = dynamic_cast<ReadingView*>(&view(name))) return utf8(reading->toPlainText());
        return utf8(view<QLabel>(name).text());
    }
    bool isShown(const char* name) { return view(name).isVisible(); }
    bool isWhollySeen(const char* name) {
        auto& shown = view(name);
        return window.rect().contains(QRect(shown.mapTo(&window, QPoint(0, 0)), shown.size())) &&
               !shown.visibleRegion().isEmpty();
    }
    int pixelsOfPart(int red, int green, int blue) {
        const QImage image = view("partView").grab().toImage();
        int count = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                count += image.pixelColor(x, y) == QColor(red, green, blue);
        return count;
    }

    void open(const std::vector<std::string>& images) {
        window.open(images);
        settle();
    }
    bool canChoose(const char* name) { return action(name).isEnabled(); }
    void choose(const char* name) { action(name).trigger(); }
    void focus(const char* name) {
        QApplication::setActiveWindow(&window);
        view(name).setFocus();
    }
    void press(Press press) {
        constexpr Qt::Key kKeys[] = {Qt::Key_Return, Qt::Key_PageUp, Qt::Key_PageDown, Qt::Key_Z};
        QTest::keyClick(window.focusWidget(), kKeys[static_cast<int>(press)],
                        press == Press::Undo ? Qt::ControlModifier : Qt::NoModifier);
    }
    void drop(const std::string& path) {
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(qtText(path))});
        QDragEnterEvent enter(QPoint(700, 300), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&window, &enter);
        EXPECT_TRUE(enter.isAccepted());
        QDropEvent drop(QPointF(700, 300), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&window, &drop);
    }
    void clickThumbnail(int index) {
        auto& strip = view<QListView>("thumbnails");
        QTest::mouseClick(strip.viewport(), Qt::LeftButton, {},
                          strip.visualRect(strip.model()->index(index, 0)).center());
    }
    void resize(int width, int height) {
        window.resize(width, height);
        window.model().arrangeFor(height);
        settle();
    }
    // Closes the window, where a form asks that is answered by this button; whether it is gone then.
    bool closes(const char* button) {
        driver.expectForm("closingForm", [&] { driver.click(button); });
        window.close();
        EXPECT_TRUE(driver.problems().empty());
        return !window.isVisible();
    }

    QtWindowDriver driver{window};
};

}  // namespace dravik::test
