// The program's window of Qt on a jobs folder of its own.
#pragma once

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSettings>
#include <QTemporaryDir>
#include <QtTest/QTest>

#include "drivers/qt/DialogScript.h"
#include "qt/MainWindow.h"
#include "qt/QtConversions.h"
#include "qt/QtImage.h"
#include "qt/QtPlatform.h"
#include "support/Testing.h"

namespace dravik::test {

using namespace engine;
using namespace qt;
using namespace trainer;

class WindowFixture : public testing::Test {
  protected:
    WindowFixture() {
        platform.setMainWindow(&window);
        window.resize(1280, 800);
        window.show();
        window.activateWindow();
        settle();
    }

    template <class View = QWidget>
    View& view(const char* name) {
        auto* found = window.findChild<View*>(QLatin1String(name));
        if (!found) throw std::runtime_error(std::string("no view named ") + name);
        return *found;
    }
    QAction& action(const char* name) { return view<QAction>(name); }
    // By the keyboard; `seen` looks at each form that comes up.
    void makeFont(const std::function<void(QWidget&)>& seen = [](QWidget&) {}) {
        DialogScript script, inner;
        script.expect("dlgFontManagerWindow", [&](QWidget& manager) {
            seen(manager);
            inner.expect("dlgFontNewWindow", [&](QWidget& form) {
                seen(form);
                QTest::keyClicks(form.focusWidget(), "one");
                QTest::keyClick(form.focusWidget(), Qt::Key_Return);
            });
            manager.findChild<QPushButton*>("cmdNewFont")->click();
            EXPECT_EQ(manager.focusWidget()->objectName(), "lbFonts");
            QTest::keyClick(manager.focusWidget(), Qt::Key_Return);
        });
        view("cmdSelectFont").setFocus();
        QTest::keyClick(window.focusWidget(), Qt::Key_Return);
        EXPECT_TRUE(script.finished() && inner.finished());
        settle();
    }
    // Forms that stand beside the window.
    std::vector<QDialog*> childForms() {
        std::vector<QDialog*> shown;
        for (auto* dialog : window.findChildren<QDialog*>())
            if (dialog->isVisible()) shown.push_back(dialog);
        return shown;
    }

    // Nothing is remembered of another test.
    struct Unremembered {
        Unremembered() { QSettings().clear(); }
    } const unremembered;
    const QTemporaryDir folder;
    QtPlatform platform;
    Trainer trainer{platform, JobFolder(folder.filePath("Jobs").toStdString()), decodeImageFile, false};
    MainWindow window{trainer, platform};
};

}  // namespace dravik::test
