#include "trainer/window/AccuracyPageFile.h"

#include <system_error>
#include <utility>

#include "base/Failure.h"
#include "base/FileSystem.h"
#include "base/OutputFile.h"
#include "base/TimeText.h"
#include "trainer/commands/AccuracyPage.h"

namespace dravik::trainer {

AccuracyPageFile::AccuracyPageFile(Trainer& trainer, WindowSystem& system)
    : trainer_(trainer), system_(system), ticked_(trainer.checkTimer().tick.connect([this] {
          if (!file_.empty() && !trainer_.tool().isChecking()) write();
      })) {}

void AccuracyPageFile::ask() {
    const auto font = trainer_.tool().currentFont();
    if (!font) return;
    FileQuestion question{"Accuracy Page of " + *font, {}, false, {{"Pages", {"*.html"}}}};
    question.fileName = *font + ".html";
    file_ = system_.chooseNewFile(question);
    if (file_.empty()) return;
    trainer_.checkFont();
    if (trainer_.tool().isChecking())
        trainer_.acts().say("The font is checked for its accuracy page...");
    else
        write();
}

void AccuracyPageFile::write() {
    const std::string file = std::exchange(file_, {});
    engine::EmbeddedTool& tool = trainer_.tool();
    const auto font = tool.currentFont();
    if (file.empty() || !font) return;
    try {
        std::error_code error;
        const auto written = fileTime(trainer_.folder().fontFile(*font), error);
        const std::string page =
            accuracyPage({*font, error ? std::string() : localTimeText(written), tool.isTrained(),
                          tool.samples(tool::SampleKind::Committed), tool.heldOutCheck()});
        OutputFile out(file, OutputFile::Start::Empty);
        out.write(page);
        out.close();
        trainer_.acts().say("The accuracy page of " + *font + " is in " + file);
    } catch (...) {
        trainer_.acts().say("The accuracy page could not be written: " + currentFailure().description());
    }
}

}  // namespace dravik::trainer
