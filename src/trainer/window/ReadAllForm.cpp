#include "trainer/window/ReadAllForm.h"

#include <algorithm>
#include <array>
#include <span>
#include <sstream>
#include <utility>

#include "base/AtomicFile.h"
#include "base/Failure.h"
#include "base/FileSystem.h"
#include "base/NumberFormat.h"
#include "base/Text.h"
#include "trainer/commands/ReadingFormat.h"

namespace dravik::trainer {
namespace {

// What may be long comes last.
constexpr std::array<const char*, 5> kHeadings = {"Image", "Confidence", "Result", "Text", "Expected"};
enum Column { kImage, kConfidence, kResult, kText, kExpected };

bool isWrong(const ImageReading& reading) {
    return reading.expected && !reading.isRefused() && !reading.isRight();
}

std::string resultOf(const ImageReading& reading) {
    if (!reading.problem.empty()) return reading.problem;
    if (reading.characters.empty()) return "no characters found";
    if (reading.isRefused()) return "refused";
    if (!reading.expected) return {};
    return reading.isRight() ? "right" : "wrong";
}

class Table : public ui::GridSource {
  public:
    explicit Table(const std::vector<ImageReading>& readings) : readings_(readings) {}

    int rows() const override { return static_cast<int>(readings_.size()) + 1; }
    int columns() const override { return static_cast<int>(kHeadings.size()); }
    std::string text(int row, int column) const override {
        if (row == 0) return kHeadings.at(static_cast<std::size_t>(column));
        const ImageReading& reading = readings_[static_cast<std::size_t>(row - 1)];
        switch (column) {
            case kImage:
                return nameOf(reading.image);
            case kText:
                return reading.text(engine::kRejectLimit, " ");
            case kConfidence:
                return reading.problem.empty() ? formatNumber(reading.confidence(), "0.000") : "";
            case kExpected:
                return reading.expected.value_or("");
            default:
                return resultOf(reading);
        }
    }

  private:
    const std::vector<ImageReading> readings_;
};

// 0 looks worst.
int rankOf(const ImageReading& reading) {
    return reading.isRefused() ? 0 : isWrong(reading) ? 1 : 2;
}

}  // namespace

ReadAllForm::ReadAllForm(OpenImage openImage, AskForFile askForFile)
    : ui::Form("readAllForm", "Read All"),
      openImage_(std::move(openImage)),
      askForFile_(std::move(askForFile)) {
    lblSummary.setUsesMnemonic(false);
    grid.setAccessibleName("What was read, the most doubtful first");
    setLayout(ui::column({
        ui::row({ui::item(lblSummary).stretched()}),
        ui::item(progress),
        ui::item(grid).stretched().atLeast(12000, 5400),
        ui::row({ui::item(cmdExport), ui::space(), ui::item(cmdOpen), ui::item(cmdStop), ui::item(cmdClose)}),
    }));
    defaultButton = &cmdOpen;
    cancelButton = &cmdClose;
    resizable = true;
    tmrRead.setEnabled(false);
    timers = {&tmrRead};
    tmrRead.tick.subscribe([this] { takeRead(); });
    cmdOpen.click.subscribe([this] { openChosen(); });
    grid.mouseDown.subscribe([this](const ui::MouseEvent& event) {
        if (event.button == ui::kLeftButton && grid.mouseRow() > 0) openChosen();
    });
    cmdExport.click.subscribe([this] { exportAll(); });
    cmdStop.click.subscribe([this] {
        if (reading_) reading_->stop();
    });
    cmdClose.click.subscribe([this] { unload(); });
    unloading.subscribe([this] {
        reading_.reset();
        tmrRead.setEnabled(false);
    });
}

void ReadAllForm::start(std::unique_ptr<ReadAll> reading) {
    reading_ = std::move(reading);
    count_ = reading_->count();
    readings_.clear();
    tmrRead.setEnabled(true);
    cmdStop.setEnabled(true);
    list();
}

void ReadAllForm::takeRead() {
    if (!reading_) return;
    const bool ended = reading_->hasEnded();
    std::vector<ImageReading> more = reading_->take();
    std::move(more.begin(), more.end(), std::back_inserter(readings_));
    if (ended) {
        std::stable_sort(readings_.begin(), readings_.end(),
                         [](const ImageReading& a, const ImageReading& b) {
                             const int first = rankOf(a), second = rankOf(b);
                             return first != second ? first < second : a.confidence() < b.confidence();
                         });
        reading_.reset();
        tmrRead.setEnabled(false);
        cmdStop.setEnabled(false);
    }
    if (ended || !more.empty()) list();
}

void ReadAllForm::list() {
    std::size_t right = 0, wrong = 0, refused = 0;
    for (const ImageReading& reading : readings_) {
        const bool isRefused = reading.isRefused();
        refused += isRefused;
        wrong += isWrong(reading);
        right += !isRefused && reading.isRight();
    }
    std::string text = std::to_string(readings_.size()) + " of " + std::to_string(count_) +
                       " read: " + std::to_string(right) + " right, " + std::to_string(wrong) + " wrong, " +
                       std::to_string(refused) + " refused";
    if (const std::size_t others = readings_.size() - right - wrong - refused; others > 0)
        text += ", " + std::to_string(others) + " without a text to compare with";
    if (!reading_ && readings_.size() < count_) text += "; stopped";
    lblSummary.setCaption(std::move(text));
    progress.setValue(count_ == 0 ? 100
                                  : 100 * static_cast<float>(readings_.size()) / static_cast<float>(count_));
    if (!reading_) grid.setSource(nullptr);  // the columns are as wide then as the whole list wants them
    grid.setSource(std::make_shared<Table>(readings_));
    for (const int column : {kImage, kResult, kText, kExpected}) grid.setAlign(column, ui::CellAlign::Left);
    cmdOpen.setEnabled(!readings_.empty());
    cmdExport.setEnabled(!readings_.empty());
}

void ReadAllForm::openChosen() {
    const int row = grid.row();
    if (row >= 1 && static_cast<std::size_t>(row) <= readings_.size())
        openImage_(readings_[static_cast<std::size_t>(row - 1)].image);
}

void ReadAllForm::exportAll() {
    const std::string file = askForFile_();
    if (file.empty()) return;
    try {
        write(file);
        lblSummary.setCaption(std::to_string(readings_.size()) + " readings are in " + file);
    } catch (...) {
        lblSummary.setCaption("Not written: " + currentFailure().description());
    }
}

void ReadAllForm::write(const std::string& file) const {
    ReadOptions options;
    options.format =
        lowerCase(file).ends_with(".json") ? ReadOptions::Format::Json : ReadOptions::Format::Csv;
    std::ostringstream out;
    const std::unique_ptr<ReadingFormat> format = readingFormat(options, out);
    for (const ImageReading& reading : readings_) format->add(reading);
    format->end();
    const std::string text = out.str();
    writeWholeFile(file, std::span(reinterpret_cast<const std::uint8_t*>(text.data()), text.size()), false);
}

}  // namespace dravik::trainer
