// A history of fonts as a test writes it down: which fonts are unsaved, which cannot be saved, which versions
// there are; and what was asked of it.
#pragma once

#include <set>
#include <string>
#include <vector>

#include "base/Failure.h"
#include "tool/FontHistory.h"

namespace dravik::test {

struct FakeHistory : tool::FontHistory {
    std::vector<std::string> unsaved;
    std::set<std::string> locked;  // of which every operation fails
    std::vector<tool::FontVersion> kept;
    std::string asked;  // "save A; discard B; "

    void endAct(std::string_view, std::string_view) override {}
    std::optional<std::string> undoWords() const override { return {}; }
    std::optional<std::string> redoWords() const override { return {}; }
    std::string undo() override { return {}; }
    std::string redo() override { return {}; }
    std::vector<std::string> unsavedFonts() const override { return unsaved; }
    void saveUnsaved(const std::string& font) override { settle("save ", font); }
    void discardUnsaved(const std::string& font) override { settle("discard ", font); }
    void exportFont(const std::string& font, const std::string& file) override {
        check(file);
        asked += "export " + font + " to " + file + "; ";
    }
    void importFont(const std::string&, const std::string&) override {}
    void keepUnsaved() override {}
    std::vector<tool::RecoveredChanges> takeRecovered() override { return {}; }
    std::vector<tool::FontVersion> versions(const std::string&) const override { return kept; }
    void restoreVersion(const tool::FontVersion& version, const std::string& name) override {
        check(name);
        asked += "restore " + version.identifier + " as " + name + "; ";
    }

  private:
    void check(const std::string& name) const {
        if (locked.count(name)) throw Failure(RuntimeError::DiskFull, "No space left for " + name);
    }
    void settle(const char* what, const std::string& font) {
        check(font);
        asked += what + font + "; ";
        std::erase(unsaved, font);
    }
};

}  // namespace dravik::test
