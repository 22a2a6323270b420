#include "trainer/window/LabelLists.h"

#include <utility>

#include "base/Failure.h"
#include "trainer/commands/SampleList.h"
#include "trainer/window/RefusedForm.h"

namespace dravik::trainer {

LabelLists::LabelLists(Trainer& trainer, ui::Platform& platform, WindowSystem& system, WindowActions& actions,
                       std::function<void(const std::vector<std::string>&)> tell)
    : trainer_(trainer), platform_(platform), system_(system), tell_(std::move(tell)), batch_(trainer) {
    actions.openLabels.triggered.subscribe([this] { open(); });
    actions.saveLabels.triggered.subscribe([this] { save(); });
    actions.includeLabelled.triggered.subscribe([this] { includeAll(); });
    connections_.push_back(batch_.started.connect([this] { changed(); }));
    connections_.push_back(batch_.ended.connect([this] {
        changed();
        showRefused();
    }));
}

void LabelLists::open() {
    FileQuestion question{"Open Labels",
                          system_.kept(kFolderKey),
                          false,
                          {{"Lists of labels", {"*.tsv", "*.txt"}}, {"All files", {"*"}}}};
    const auto paths = system_.choosePaths(question);
    if (paths.empty()) return;
    try {
        const std::size_t count = trainer_.labelling().openLabels(paths.front());
        trainer_.acts().say("Labels of " + std::to_string(count) +
                            " images \u2013 Font > Include All Labelled");
    } catch (const SampleListError& error) {
        tell_(error.problems);
    }
}

void LabelLists::save() {
    FileQuestion question{"Save Labels", system_.kept(kFolderKey), false, {{"Lists of labels", {"*.tsv"}}}};
    question.fileName = "labels.tsv";
    const std::string file = system_.chooseNewFile(question);
    if (file.empty()) return;
    std::vector<std::string> images;
    images.reserve(static_cast<std::size_t>(trainer_.parts().count()));
    for (int i = 0; i < trainer_.parts().count(); ++i) images.push_back(trainer_.parts().path(i));
    try {
        const std::size_t count = trainer_.labelling().labels().save(file, images);
        trainer_.acts().say("Labels of " + std::to_string(count) + " images are in " + file);
    } catch (...) {
        trainer_.acts().say("The labels could not be saved: " + currentFailure().description());
    }
}

void LabelLists::includeAll() {
    if (batch_.count() == 0)
        trainer_.acts().say("No opened image has a label that is not in the font yet");
    else if (trainer_.control().selectedFont().empty())
        trainer_.acts().say("Select a font first");
    else
        batch_.start();
}

void LabelLists::showRefused() {
    if (batch_.refused().empty()) return;
    RefusedForm form(batch_.refused(), [&parts = trainer_.parts()](const std::string& path) {
        for (int i = 0; i < parts.count(); ++i)
            if (parts.path(i) == path) return parts.setCurrent(i);
    });
    platform_.showModal(form);
}

}  // namespace dravik::trainer
