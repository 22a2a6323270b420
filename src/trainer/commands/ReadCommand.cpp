#include <iostream>
#include <memory>
#include <optional>

#include "base/Failure.h"
#include "base/FileSystem.h"
#include "base/Paths.h"
#include "engine/embedded/EmbeddedTool.h"
#include "engine/image/ImageFiles.h"
#include "tool/FontName.h"
#include "trainer/commands/Commands.h"
#include "trainer/commands/InOrder.h"
#include "trainer/commands/ReadingFormat.h"
#include "trainer/commands/SampleList.h"

namespace dravik::trainer {
namespace {

void loadTrainedFont(engine::EmbeddedTool& tool, const std::string& name, const JobFolder& folder,
                     const CommandStreams& streams) {
    const auto fonts = tool.GetFontList();
    const auto font = tool::fontNamed(name, fonts);
    if (!font) {
        std::string others;
        for (const auto& other : fonts) others += (others.empty() ? "; there are " : ", ") + other;
        throw Failure(RuntimeError::FileNotFound, "no such font in " + folder.fontsFolder() + others);
    }
    tool.LoadFont(*font);
    streams.tellRecovered(tool);
    if (!tool.isTrained()) throw Failure(RuntimeError::InvalidProcedureCall, "is not trained");
}

// An image that is to be read.
struct Task {
    std::string image;  // as it is printed
    std::string path;
    std::optional<std::string> expected;
};

void addImages(const std::string& name, std::vector<Task>& tasks, const CommandStreams& streams, bool& all) {
    if (entryKind(name) != EntryKind::Folder) {
        tasks.push_back({name, name, {}});
        return;
    }
    std::error_code error;
    const auto images = engine::imagesIn(toPath(name), error);
    for (const auto& image : images) tasks.push_back({fromPath(image), fromPath(image), {}});
    if (!error && !images.empty()) return;
    streams.problem(name + ": " + (error ? error.message() : "no images in this folder"));
    all = false;
}

std::vector<Task> tasksOf(const ReadOptions& options, const CommandStreams& streams, bool& all) {
    std::vector<Task> tasks;
    if (!options.samples.empty())
        for (ListedSample& one : readSampleList(options.samples))
            tasks.push_back({std::move(one.image), std::move(one.path), std::move(one.text)});
    for (const std::string& name : options.images) {
        if (name != "-") {
            addImages(name, tasks, streams, all);
            continue;
        }
        std::istream& in = streams.in ? *streams.in : std::cin;
        for (std::string line; std::getline(in, line);) {
            if (line.ends_with('\r')) line.pop_back();
            if (!line.empty()) addImages(line, tasks, streams, all);
        }
    }
    return tasks;
}

}  // namespace

int readImages(const ReadOptions& options, const engine::ImageDecoder& decoder,
               const CommandStreams& streams) {
    engine::EmbeddedTool tool(options.folder);
    try {
        loadTrainedFont(tool, options.font, options.folder, streams);
    } catch (...) {
        streams.problem("font " + options.font + ": " + currentFailure().description());
        return 1;
    }

    bool all = true;
    std::vector<Task> tasks;
    try {
        tasks = tasksOf(options, streams, all);
    } catch (const SampleListError& error) {
        for (const std::string& problem : error.problems) streams.problem(problem);
        return 1;
    }
    tool.overrideSettings(options.settings.over(tool.settings()));
    const engine::FontReader reader =
        tool.reader(options.usesContext ? engine::Context::Used : engine::Context::Ignored);
    InOrder<ImageReading> readings(tasks.size(), options.threads > 0 ? options.threads : processorCount(),
                                   [&](std::size_t i, const std::stop_token& stop) {
                                       return readImage(tasks[i].image, tasks[i].path, tasks[i].expected,
                                                        reader, decoder, stop);
                                   });
    const std::unique_ptr<ReadingFormat> format = readingFormat(options, streams.out);
    std::size_t right = 0, unread = 0;
    for (std::size_t i = 0; i < tasks.size(); ++i) {
        const ImageReading reading = readings.take();
        format->add(reading);
        if (!reading.problem.empty()) {
            streams.problem(reading.problem);
            ++unread;
        }
        right += reading.isRight();
        if (!streams.out) break;  // nobody reads on
    }
    format->end();
    if (!options.samples.empty()) {
        streams.err << right << " of " << tasks.size() << " right, " << tasks.size() - right - unread
                    << " wrong, " << unread << " not read\n";
        all = all && right == tasks.size();
    }
    return all && unread == 0 ? 0 : 1;
}

}  // namespace dravik::trainer
