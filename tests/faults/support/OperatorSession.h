// An operator at work with the trainer from its start to its end, without its window: one step after the
// other on the embedded tool, as the window asks for them. What a step has made of a font is told as soon as
// it is done, in lines of words with tabs between them:
//   shown FONT CONTENT         the font as it is now;
//   failed FONT CONTENT        the same, behind a step that failed and said so;
//   chosen FONT CONTENT        the font as it is shown first;
//   let go FONT CONTENT        what the operator is about to discard;
//   dropped FONT               it is discarded;
//   gone FONT CONTENT          a font that was deleted, or that has another name now;
//   elsewhere FONT FILE        a copy saved in another place, as the font could not be saved;
//   recovered FONT, told TEXT  what the program found unsaved, and its words for it.
#pragma once

#include <csignal>
#include <iostream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "FontContent.h"
#include "base/Failure.h"
#include "base/Text.h"
#include "engine/embedded/EmbeddedTool.h"
#include "tool/Samples.h"
#include "trainer/support/PgmFile.h"

namespace dravik::test {

class OperatorSession {
  public:
    explicit OperatorSession(const std::string& jobs) : jobs_(jobs) {}

    // Steps of one line each, "include d5.pgm 0123456789"; "other" before a step is a second tool on the same
    // fonts, "refused" says that somebody else is at work on the font. True when none has failed.
    bool work(const std::vector<std::string>& steps) {
        bool isWell = true;
        for (const std::string& step : steps) {
            try {
                take(step);
            } catch (...) {
                isWell = false;
                std::cerr << "fault-acts: " << step << ": " << currentFailure().description() << std::endl;
                if (tool_->currentFont())
                    tell("failed");
                else
                    std::cout << "failed" << std::endl;
            }
        }
        return isWell;
    }

    // What a program that starts finds in each font, and whether all of it can be taken back and done again.
    void show() {
        tool_ = &opened();
        for (const std::string& font : tool_->GetFontList()) {
            load(font);
            const std::string content = tell("shown");
            int undone = 0;
            for (; tool_->undoWords(); ++undone) {
                tool_->undo();
                tell("undone");
            }
            for (; undone > 0; --undone) tool_->redo();
            tell(shown(font) == content ? "redone" : "differs");
        }
    }

  private:
    // Opens in the order in which they are asked for, as two windows do.
    engine::EmbeddedTool& opened() {
        tools_.push_back(std::make_unique<engine::EmbeddedTool>(JobFolder(jobs_)));
        tools_.back()->keepUnsaved();
        return *tools_.back();
    }

    engine::EmbeddedTool& toolOf(bool isOther) {
        const std::size_t place = isOther ? 1 : 0;
        while (tools_.size() <= place) opened();
        return *tools_[place];
    }

    void take(const std::string& step) {
        std::istringstream words(step);
        std::string what;
        words >> what;
        const bool isRefused = what == "refused";
        if (isRefused) words >> what;
        const bool isOther = what == "other";
        tool_ = &toolOf(isOther);
        if (isOther) words >> what;
        std::string first, second;
        words >> first >> second;
        if (!isRefused) return act(what, first, second);
        try {
            act(what, first, second);
        } catch (const Failure& failure) {
            if (failure.description().find("is being changed by") != std::string::npos) return;
            throw;
        }
        throw Failure(RuntimeError::InvalidProcedureCall, "Nobody was said to be at work on the font");
    }

    void act(const std::string& what, const std::string& first, const std::string& second) {
        if (what == "choose") {
            load(first);
            tell("chosen");
            return;
        } else if (what == "new") {
            tool_->CreateFont(first);
            tell("shown");
            tool_->SetCharacterSet(characters("0123456789"));
            tool_->endAct("", "state of new");
        } else if (what == "include") {
            tool_->setImage(readPgm(first));
            tool_->IncludeSamples(second);
            tool_->CommitNewSamples();
            tool_->endAct("inclusion of " + second, "state of include");
        } else if (what == "delete") {
            tool_->DeleteSample(tool::sampleIdentifier(tool::SampleKind::Committed, std::stoi(first)));
            tool_->endAct("deletion of a sample", "state of delete");
        } else if (what == "undo") {
            tool_->undo();
        } else if (what == "redo") {
            tool_->redo();
        } else if (what == "save") {
            tool_->saveUnsaved(first);
        } else if (what == "rename") {
            const std::string content = shown(second);
            tool_->RenameFont(first, second);
            std::cout << "gone\t" << second << '\t' << content << "\nshown\t" << first << '\t' << content
                      << std::endl;
        } else if (what == "remove") {
            const std::string content = shown(first);
            tool_->DeleteFont(first);
            std::cout << "gone\t" << first << '\t' << content << std::endl;
        } else if (what == "make") {
            tool_->CreateFont(first);
            tool_->SetCharacterSet({"A", "B"});
            return tool_->SaveFont(first);
        } else if (what == "duplicate") {
            return tool_->DuplicateFont(first, second);
        } else if (what == "close-saving") {
            return closeSaving();
        } else if (what == "close-discarding") {
            return closeDiscarding();
        } else if (what == "die") {
            std::raise(SIGKILL);
        } else {
            throw Failure(RuntimeError::InvalidProcedureCall, "There is no step " + what);
        }
        tell("shown");
    }

    // Saves all, and what cannot be saved elsewhere.
    void closeSaving() {
        std::string problems;
        for (const std::string& font : tool_->unsavedFonts()) {
            try {
                tool_->saveUnsaved(font);
            } catch (...) {
                problems += font + ": " + currentFailure().description() + " ";
                tool_->exportFont(font, font + ".copy");
                std::cout << "elsewhere\t" << font << '\t' << font << ".copy" << std::endl;
            }
        }
        if (!problems.empty()) throw Failure(RuntimeError::PathFileAccessError, problems);
    }

    void closeDiscarding() {
        for (const std::string& font : tool_->unsavedFonts()) {
            const std::string content = shown(font);
            std::cout << "let go\t" << font << '\t' << content << std::endl;
            tool_->discardUnsaved(font);
            std::cout << "dropped\t" << font << std::endl;
            const std::string left = shown(font);  // which may fail before the line begins
            std::cout << "shown\t" << font << '\t' << left << std::endl;
        }
    }

    void load(const std::string& font) {
        tool_->LoadFont(font);
        for (const tool::RecoveredChanges& found : tool_->takeRecovered())
            std::cout << "recovered\t" << found.font << "\ttold " << tool::recoveredText(found) << '\n';
    }

    std::string shown(const std::string& font) {
        tool_->exportFont(font, "shown.copy");
        return contentOf(engine::readFont("shown.copy"));
    }

    std::string tell(const char* what) {
        if (!tool_->currentFont()) return {};
        const std::string content = shown(*tool_->currentFont());
        std::cout << what << '\t' << *tool_->currentFont() << '\t' << content << std::endl;
        return content;
    }

    std::string jobs_;
    std::vector<std::unique_ptr<engine::EmbeddedTool>> tools_;
    engine::EmbeddedTool* tool_ = nullptr;
};

}  // namespace dravik::test
