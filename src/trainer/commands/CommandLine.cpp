#include "trainer/commands/CommandLine.h"

#include <algorithm>
#include <charconv>
#include <ostream>
#include <system_error>

#include "base/Failure.h"
#include "base/Text.h"
#include "trainer/SampleList.h"
#include "trainer/commands/Arguments.h"
#include "trainer/commands/Commands.h"
#include "trainer/commands/HeadlessSession.h"

namespace dravik::trainer {
namespace {

constexpr char kProgram[] = "dravik-trainer";
constexpr std::int32_t kLongestRun = 86400;

constexpr char kHelp[] =
    R"(Usage: dravik-trainer [--jobs DIR] [IMAGE|FOLDER...]
       dravik-trainer learn --font NAME --samples LIST.tsv [--charset CHARS]
                      [--timeout SECONDS] [--jobs DIR]
       dravik-trainer read --font NAME [--reject LIMIT] [--confidence]
                      [--jobs DIR] IMAGE...
       dravik-trainer fonts [--jobs DIR]

Teaches fonts to the Dravik OCR tool and reads images with them. Without a
command it opens its window on the images; the commands need no display.

learn   includes every image of a list, trains the font, saves it and checks it
        on held-out samples; the font is made when it is missing
read    prints what a trained font reads in each image
fonts   lists the fonts: name, characters, samples, trained or not, date

  --font NAME        the font to teach or to read with
  --samples LIST.tsv the list: a row for each image, file TAB text, files
                     relative to the list's folder, \n between lines of text
  --charset CHARS    the characters that the font is to have; characters of the
                     list that it lacks are added
  --timeout SECONDS  time limit of the training, 1 to 86400
  --reject LIMIT     characters read with less confidence are printed as ?;
                     0 to 1, else 0.2
  --confidence       prints how sure each character is, 0 to 1, behind the text
  --jobs DIR         the jobs folder (else $XDG_DATA_HOME/tamlux/Jobs, on Windows
                     C:\Tamlux\Jobs)
  --theme THEME      the window's colours: light, dark or system (Linux)
  --help, --version

Exit status: 0 done, 1 the work failed in whole or in part, 2 wrong command
line, 130 interrupted.
)";

std::optional<std::int32_t> runSeconds(const std::string& text) {
    std::int32_t seconds = 0;
    const auto* end = text.data() + text.size();
    const auto parsed = std::from_chars(text.data(), end, seconds);
    if (parsed.ec != std::errc{} || parsed.ptr != end || seconds < 1 || seconds > kLongestRun)
        return std::nullopt;
    return seconds;
}

std::optional<double> rejectLimit(const std::string& text) {
    double limit = 0;
    const auto* end = text.data() + text.size();
    const auto parsed = std::from_chars(text.data(), end, limit);
    if (parsed.ec != std::errc{} || parsed.ptr != end || !(limit >= 0 && limit <= 1)) return std::nullopt;
    return limit;
}

JobFolder jobFolder(const std::string& folder) {
    return folder.empty() ? JobFolder() : JobFolder(folder);
}

// What is wrong with the arguments beyond their form, "" when nothing is.
std::string firstProblem(const std::string& command, const Arguments& arguments) {
    if (!arguments.problem.empty()) return arguments.problem;
    for (const auto& [name, value] : arguments.options)
        if (trimmed(value).empty()) return "the value of " + name + " is empty";
    if (!isPrintable(arguments.option("--charset").value_or(""))) return "--charset is not UTF-8 text";
    const auto timeout = arguments.option("--timeout");
    if (timeout && !runSeconds(*timeout))
        return "--timeout takes whole seconds from 1 to " + std::to_string(kLongestRun) + ", not " + *timeout;
    const auto limit = arguments.option("--reject");
    if (limit && !rejectLimit(*limit)) return "--reject takes a number from 0 to 1, not " + *limit;
    if (command != "fonts" && !arguments.option("--font")) return command + " needs --font NAME";
    if (command == "learn" && !arguments.option("--samples")) return "learn needs --samples LIST.tsv";
    if (command == "read") return arguments.operands.empty() ? "read needs at least one image" : "";
    return arguments.operands.empty() ? "" : "unexpected argument " + arguments.operands.front();
}

std::vector<std::string> knownOptions(const std::string& command) {
    if (command == "learn") return {"--font", "--samples", "--charset", "--timeout", "--jobs"};
    if (command == "read") return {"--font", "--reject", "--jobs"};
    return {"--jobs"};
}

std::vector<std::string> knownFlags(const std::string& command) {
    if (command == "read") return {"--confidence"};
    return {};
}

int run(const std::string& command, const Arguments& arguments, const ImageDecoder& decoder,
        const CommandStreams& streams) {
    const auto folder = jobFolder(arguments.option("--jobs").value_or(""));
    const auto font = arguments.option("--font").value_or("");
    if (command == "fonts") return listFonts(folder, streams);
    if (command == "read") {
        ReadOptions options{font, arguments.operands, engine::kRejectLimit, arguments.flag("--confidence")};
        if (const auto limit = arguments.option("--reject")) options.rejectLimit = *rejectLimit(*limit);
        return readImages(options, folder, decoder, streams);
    }
    LearnOptions options{font, arguments.option("--samples").value_or(""), arguments.option("--charset"), {}};
    if (const auto timeout = arguments.option("--timeout")) options.seconds = runSeconds(*timeout);
    return learnFont(options, folder, decoder, streams);
}

int wrongUse(const std::string& problem, const CommandStreams& streams) {
    streams.problem(problem + " (see dravik-trainer --help)");
    return 2;
}

}  // namespace

void CommandStreams::problem(const std::string& text) const {
    out.flush();
    err << kProgram << ": " << onOneLine(text) << std::endl;
}

bool isHeadlessCommand(const std::vector<std::string>& arguments) {
    static const std::vector<std::string> kFirst = {"learn", "read", "fonts", "--help", "-h", "--version"};
    return !arguments.empty() && std::find(kFirst.begin(), kFirst.end(), arguments.front()) != kFirst.end();
}

int runHeadless(const std::vector<std::string>& arguments, const ImageDecoder& decoder, std::ostream& out,
                std::ostream& err, bool errIsTerminal) {
    const CommandStreams streams{out, err, errIsTerminal};
    try {
        if (!isHeadlessCommand(arguments))
            return wrongUse(arguments.empty() ? "no command" : "unknown command " + arguments.front(),
                            streams);
        const auto& command = arguments.front();
        int status = 0;
        if (command == "--version") {
            out << kProgram << ' ' << DRAVIK_VERSION << '\n';
        } else if (command.starts_with('-')) {
            out << kHelp;
        } else {
            const auto parsed = parseArguments({arguments.begin() + 1, arguments.end()},
                                               knownOptions(command), knownFlags(command));
            if (parsed.wantsHelp)
                out << kHelp;
            else if (const auto problem = firstProblem(command, parsed); !problem.empty())
                return wrongUse(problem, streams);
            else
                status = run(command, parsed, decoder, streams);
        }
        out.flush();
        if (out) return status;
        streams.problem("the results cannot be written");
    } catch (...) {
        streams.problem(currentFailure().description());
    }
    return 1;
}

WindowOptions windowOptions(const std::vector<std::string>& arguments) {
    auto parsed = parseArguments(arguments, {"--jobs"});
    WindowOptions options{std::move(parsed.operands), parsed.option("--jobs").value_or(""), parsed.problem};
    if (options.problem.empty() && parsed.option("--jobs") && options.jobs.empty())
        options.problem = "the value of --jobs is empty";
    if (!options.problem.empty()) options.problem += " (see dravik-trainer --help)";
    return options;
}

}  // namespace dravik::trainer
