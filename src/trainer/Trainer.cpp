#include "trainer/Trainer.h"

#include <utility>

#include "base/Failure.h"
#include "base/Text.h"
#include "tool/CaseRule.h"
#include "tool/IncludeRules.h"

namespace dravik::trainer {
namespace {

constexpr char kProgramName[] = "Dravik Trainer";

std::string counted(std::size_t count, const std::string& what) {
    return std::to_string(count) + (count == 1 ? " character " : " characters ") + what;
}

}  // namespace

struct Trainer::Parts {
    Parts(ui::Platform& platform, const JobFolder& jobs, ImageDecoder decoder, bool remembersFont)
        : folder(jobs),
          tool(std::make_shared<engine::EmbeddedTool>(folder, remembersFont)),
          opened(std::move(decoder)),
          control(platform, folder) {}

    bool isTraining() { return control.screen().train.tmrTrain.enabled(); }

    // The text as Include hands it to the tool.
    std::string textToInclude() {
        const auto& typing = control.screen().sample;
        const auto text = tool::textToInclude(typing.txtSampleInput.text());
        if (!typing.chkCase.checked() || text.empty()) return text;
        return tool::inCase(text, tool::fontCase(*tool));
    }

    void findPreview() {
        preview.clear();
        mismatch = 0;
        previewText.clear();
        if (opened.current() < 0) {
            previewText = "No image is open";
        } else if (!opened.problem().empty()) {
            previewText = opened.problem();
        } else {
            const auto& found = tool->found();
            const auto typed = characters(textToInclude());
            preview.reserve(found.size());
            for (std::size_t i = 0; i < found.size(); ++i)
                preview.push_back({found[i], i < typed.size() ? typed[i] : std::string()});
            previewText = counted(found.size(), "found");
            if (!typed.empty()) {
                mismatch = static_cast<int>(typed.size()) - static_cast<int>(found.size());
                previewText += ", " + std::to_string(typed.size()) + " typed";
            }
        }
    }

    void findReading() {
        reading = {};
        if (opened.current() < 0) {
            reading.note = "No image is open";
        } else if (!opened.problem().empty()) {
            reading.note = opened.problem();
        } else if (isTraining()) {
            reading.note = "The font is being trained";
        } else if (!tool->currentFont()) {
            reading.note = "No font is selected";
        } else if (!tool->isTrained()) {
            reading.note = "The font is not trained yet";
        } else {
            reading.available = true;
            for (auto& character : tool->read()) {
                if (reading.lines.empty() || reading.lines.back().back().place.line != character.place.line)
                    reading.lines.emplace_back();
                reading.lines.back().push_back(std::move(character));
            }
            if (reading.lines.empty()) reading.note = "No characters found";
        }
    }

    std::string findCheck(bool& goesOn) {
        if (isTraining()) return {};
        goesOn = tool->isChecking();
        if (goesOn) return "Held-out check is going on...";
        const engine::HeldOutResult* result = tool->heldOutCheck();
        return result ? engine::heldOutText(*result) : std::string();
    }

    const JobFolder folder;
    const std::shared_ptr<engine::EmbeddedTool> tool;
    OpenedParts opened;
    screen::DravikDlg control;

    std::vector<LabelledCharacter> preview;
    int mismatch = 0;
    std::string previewText;
    Reading reading;
    std::string checkText;
    ui::Timer checkTimer{"tmrCheck", 100};
    std::string lastTitle;
    std::vector<ui::Connection> connections;
};

Trainer::Trainer(ui::Platform& platform, const JobFolder& folder, ImageDecoder decoder, bool remembersFont)
    : parts_(std::make_unique<Parts>(platform, folder, std::move(decoder), remembersFont)) {
    auto& parts = *parts_;
    parts.control.setStep(parts.tool);

    const auto refreshPreview = [this, &parts] {
        try {
            parts.findPreview();
        } catch (...) {
            parts.preview.clear();
            parts.mismatch = 0;
            parts.previewText = currentFailure().description();
        }
        previewChanged();
    };
    const auto refreshReading = [this, &parts] {
        try {
            parts.findReading();
        } catch (...) {
            parts.reading = {};
            parts.reading.note = currentFailure().description();
        }
        readingChanged();
    };
    const auto refreshTitle = [this, &parts] {
        auto now = title();
        if (now == parts.lastTitle) return;
        parts.lastTitle = std::move(now);
        titleChanged();
    };
    const auto refreshCheck = [this, &parts] {
        std::string now;
        bool goesOn = false;
        try {
            now = parts.findCheck(goesOn);
        } catch (...) {
            now = currentFailure().description();
        }
        parts.checkTimer.setEnabled(goesOn);
        if (now == parts.checkText) return;
        parts.checkText = std::move(now);
        checkChanged();
    };
    const auto refreshFont = [=] {
        refreshTitle();
        refreshPreview();
        refreshReading();
        refreshCheck();
    };
    parts.connections.push_back(parts.checkTimer.tick.connect(refreshCheck));

    auto& connections = parts.connections;
    connections.push_back(parts.opened.currentChanged.connect([=, &parts] {
        parts.tool->shareImage(parts.opened.sharedImage());
        refreshPreview();
        refreshReading();
    }));
    // These come after the screen's own procedures, which subscribed first.
    auto& screen = parts.control.screen();
    connections.push_back(screen.sample.txtSampleInput.textChanged.connect(refreshPreview));
    connections.push_back(screen.sample.chkCase.click.connect(refreshPreview));
    connections.push_back(parts.control.fontStateChanged.connect(refreshFont));
    connections.push_back(screen.train.tmrTrain.changed.connect(refreshFont));
    connections.push_back(screen.train.cmdStop.click.connect(refreshFont));
    connections.push_back(screen.train.cmdSaveFont.click.connect(refreshFont));
    connections.push_back(screen.train.cmdRevert.click.connect(refreshFont));
    connections.push_back(screen.sample.cmdInclude.click.connect(refreshTitle));
    connections.push_back(screen.font.txtCharSet.textChanged.connect(refreshTitle));
    refreshFont();
}

Trainer::~Trainer() = default;

screen::DravikDlg& Trainer::control() noexcept {
    return parts_->control;
}

bool Trainer::isTraining() const noexcept {
    return parts_->isTraining();
}

engine::EmbeddedTool& Trainer::tool() noexcept {
    return *parts_->tool;
}

OpenedParts& Trainer::parts() noexcept {
    return parts_->opened;
}

const JobFolder& Trainer::folder() const noexcept {
    return parts_->folder;
}

const std::vector<LabelledCharacter>& Trainer::preview() const noexcept {
    return parts_->preview;
}

int Trainer::mismatch() const noexcept {
    return parts_->mismatch;
}

std::string Trainer::previewText() const {
    return parts_->previewText;
}

const std::string& Trainer::checkText() const noexcept {
    return parts_->checkText;
}

ui::Timer& Trainer::checkTimer() noexcept {
    return parts_->checkTimer;
}

const Reading& Trainer::reading() const noexcept {
    return parts_->reading;
}

std::string Trainer::title() const {
    const auto font = parts_->control.selectedFont();
    if (font.empty()) return kProgramName;
    return font + (parts_->control.m_FontChanged() ? "* - " : " - ") + kProgramName;
}

}  // namespace dravik::trainer
