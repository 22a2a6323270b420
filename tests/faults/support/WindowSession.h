// An operator at work with the window: each step is done by what the operator sees, by clicks and keys, and
// what it has made of the shown font is told as in OperatorSession.h. Steps: "new FONT", "choose FONT",
// "include IMAGE TEXT", "undo", "redo", "learn", "close-saving" and "wait", until somebody ends it.
#pragma once

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QListWidget>
#include <QMessageBox>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

#include "FontContent.h"
#include "base/Failure.h"
#include "drivers/qt/DialogScript.h"
#include "drivers/qt/QtWindowDriver.h"
#include "qt/EndSignals.h"
#include "qt/MainWindow.h"
#include "qt/QtConversions.h"
#include "qt/QtPlatform.h"
#include "trainer/support/PgmFile.h"

namespace dravik::test {

class WindowSession {
  public:
    explicit WindowSession(const std::string& jobs)
        : trainer_(platform_, JobFolder(jobs), readPgm, true), window_(trainer_, platform_) {
        platform_.setMainWindow(&window_);
        window_.show();
    }

    // True when none has failed.
    bool work(const std::vector<std::string>& steps) {
        bool isWell = true;
        tellRecovered();
        for (const std::string& step : steps) {
            QtWindowDriver driver(window_);
            driver_ = &driver;
            driver.answerBoxes(ui::Answer::Yes);
            std::string problem;
            try {
                std::istringstream words(step);
                std::string what, first, second;
                words >> what >> first >> second;
                act(what, first, second);
            } catch (...) {
                problem = currentFailure().description() + " ";
            }
            problem += problems();
            if (hasEnded_ && problem.empty()) return isWell;
            isWell = isWell && problem.empty();
            if (!problem.empty()) std::cerr << "fault-window: " << step << ": " << problem << std::endl;
            tell(problem.empty() ? "shown" : "failed");
            tellRecovered();
        }
        return isWell;
    }

  private:
    void act(const std::string& what, const std::string& first, const std::string& second) {
        if (what == "new")
            inManager([&] {
                driver_->expectForm("dlgFontNew", [&] {
                    driver_->type("txtFontName", first);
                    driver_->click("InitCharSet(7)");
                    driver_->click("OKButton");
                });
                driver_->click("cmdNewFont");
            });
        else if (what == "choose")
            inManager([&] { choose(first); });
        else if (what == "include")
            include(first, second);
        else if (what == "undo" || what == "redo")
            trigger(what.c_str());
        else if (what == "learn")
            learn();
        else if (what == "close-saving")
            closeSaving();
        else if (what == "wait") {
            std::cout << "waiting" << std::endl;
            QApplication::exec();
        }
    }

    void inManager(const WindowDriver::Step& step) {
        driver_->expectForm("dlgFontManager", [&] {
            step();
            noteFailure("sbr.Text");
            driver_->click("OKButton");
        });
        driver_->click("cmdSelectFont");
    }
    static void choose(const std::string& font) {
        auto* list = QApplication::activeModalWidget()->findChild<QListWidget*>(QStringLiteral("lbFonts"));
        const auto found = list->findItems(qt::qtText(font), Qt::MatchExactly);
        if (found.isEmpty()) throw SessionFailure("there is no font " + font);
        list->setCurrentItem(found.front());
    }
    void include(const std::string& image, const std::string& text) {
        window_.open({image});
        auto& parts = trainer_.parts();
        for (int i = 0; i < parts.count(); ++i)
            if (parts.path(i).ends_with(image)) parts.setCurrent(i);
        driver_->type("txtSampleInput", text);
        driver_->click("cmdInclude");
    }
    void learn() {
        driver_->click("cmdTrain");
        if (!waitUntil([this] { return !trainer_.isTraining(); })) throw SessionFailure("it goes on");
        driver_->click("cmdSaveFont");
    }
    void trigger(const char* name) {
        auto* action = window_.findChild<QAction*>(QLatin1String(name));
        if (!action->isEnabled()) throw SessionFailure(std::string(name) + " cannot be chosen");
        action->trigger();
    }
    void closeSaving() {
        const auto leaving = trainer_.history().unsavedFonts();
        DialogScript script;
        if (!leaving.empty())
            script.expect(QStringLiteral("closingFormWindow"), [](QWidget& form) {
                form.findChild<QAbstractButton*>(QStringLiteral("cmdSaveAll"))->click();
                if (form.isVisible())
                    form.findChild<QAbstractButton*>(QStringLiteral("CancelButton"))->click();
            });
        script.answerOthers(QStringLiteral("OK"));
        hasEnded_ = window_.close();
        for (const QString& text : script.messages() + script.problems()) problems_ += qt::utf8(text) + " ";
        const auto left = trainer_.history().unsavedFonts();
        for (const std::string& font : leaving)
            if (std::ranges::find(left, font) == left.end()) std::cout << "saved\t" << font << std::endl;
    }

    // What the window has said of failures.
    std::string problems() {
        std::string text;
        for (const std::string& one : driver_->problems()) text += one + " ";
        for (const std::string& one : driver_->messages())
            if (one.find("Include these characters now?") == std::string::npos) text += one + " ";
        noteFailure("sbr.Message");
        if (const std::string notice = window_.model().noticeText();
            notice.find(" Err ") != std::string::npos)
            problems_ += notice;
        return text + std::exchange(problems_, {});
    }
    // What stands in a status bar, when it is a failure.
    void noteFailure(const char* panel) {
        const std::string message = driver_->caption(panel);
        if (message.find(" Err ") != std::string::npos || message.find(" err ") != std::string::npos)
            problems_ += message + " ";
    }
    void tellRecovered() {
        for (const std::string& line : window_.model().problems())
            std::cout << "recovered\t" << line.substr(0, line.find(':')) << "\ttold " << line << std::endl;
        window_.model().dismissProblems();
    }
    // Tried once more, since the fault may meet this.
    std::string shown(const std::string& font) {
        try {
            trainer_.history().exportFont(font, "shown.copy");
        } catch (const Failure&) {
            trainer_.history().exportFont(font, "shown.copy");
        }
        return contentOf(engine::readFont("shown.copy"));
    }
    void tell(const char* what) {
        if (const auto font = trainer_.tool().currentFont())
            std::cout << what << '\t' << *font << '\t' << shown(*font) << std::endl;
    }

    qt::QtPlatform platform_;
    trainer::Trainer trainer_;
    qt::MainWindow window_;
    const qt::EndSignals signals_{[this] { window_.remember(); }};
    QtWindowDriver* driver_ = nullptr;
    bool hasEnded_ = false;
    std::string problems_;
};

}  // namespace dravik::test
