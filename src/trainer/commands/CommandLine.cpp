#include "trainer/commands/CommandLine.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <filesystem>
#include <memory>
#include <optional>
#include <ostream>
#include <string_view>
#include <system_error>

#include "base/Failure.h"
#include "base/Paths.h"
#include "base/Text.h"
#include "trainer/commands/SampleList.h"

namespace dravik::trainer {
namespace {

constexpr std::int32_t kLongestRun = 86400;
constexpr int kHelpColumn = 25;

constexpr char kAbout[] =
    R"(Teaches fonts to the Dravik OCR tool and reads images with them. Without a
command it opens its window on the images; the commands need no display.
)";
constexpr char kStatuses[] =
    R"(Exit status: 0 done, 1 the work failed in whole or in part, 2 wrong command
line, 130 interrupted.)";

// The number that is all of the text and lies in the range.
template <class Number>
Number inRange(const char* option, const char* wanted, const std::string& text, Number least, Number most) {
    Number value{};
    const auto* end = text.data() + text.size();
    const auto parsed = std::from_chars(text.data(), end, value);
    if (parsed.ec != std::errc{} || parsed.ptr != end || !(value >= least && value <= most))
        throw CLI::ValidationError(std::string(option) + " takes " + wanted + ", not " + text);
    return value;
}

// The window and the commands are two ways to call the program.
class HelpFormat : public CLI::Formatter {
  public:
    std::string make_usage(const CLI::App* app, std::string name) const override {
        if (app->get_subcommands({}).empty()) return Formatter::make_usage(app, name);
        return "Usage: " + name + " [OPTIONS] [IMAGE|FOLDER...]\n       " + name + " COMMAND [OPTIONS] ...\n";
    }
};

// The program's options: names, checks and help in one place, for every command and for the window. What they
// hold after a parse is for the command that was parsed.
class OptionTable {
  public:
    OptionTable()
        : program_(kAbout, kProgram),
          learn_(command("learn",
                         "includes every image of a list, trains the font, saves it and\n"
                         "checks it on held-out samples; makes the font when it is missing")),
          read_(command("read", "prints what a trained font reads in each image")),
          fonts_(command("fonts",
                         "lists the fonts: name, characters, samples, trained or not, date;\n"
                         "lists and restores earlier versions and deleted fonts")) {
        program_.footer(kStatuses);
        const std::string version = std::string(kProgram) + ' ' + DRAVIK_VERSION;
        program_.set_version_flag("--version", version, "prints the version");
        const auto format = std::make_shared<HelpFormat>();
        format->column_width(kHelpColumn);
        format->label("REQUIRED", "(needed)");
        for (CLI::App* app : {&program_, learn_, read_, fonts_}) {
            app->allow_windows_style_options(false);
            app->formatter(format);
            app->set_help_flag("-h,--help", "prints this");
            text(*app, "--jobs", "DIR", jobs_,
                 "the jobs folder (else $XDG_DATA_HOME/tamlux/Jobs, on Windows\nC:\\Tamlux\\Jobs)");
        }

        text(*learn_, "--font", "NAME", learning_.font, "the font to teach")->required();
        text(*learn_, "--samples", "LIST.tsv", learning_.samples,
             "the list: a row for each image, file TAB text, files relative\n"
             "to the list's folder, \\n between lines of text")
            ->required();
        text(*learn_, "--charset", "CHARS", characters_,
             "the characters that the font is to have; characters of the\nlist that it lacks are added")
            ->check([](const std::string& value) {
                const auto problem = labelProblem(value);
                return problem.empty() ? problem : "is " + problem;
            });
        converted(*learn_, "--timeout", "SECONDS", "time limit of the training, 1 to 86400",
                  [this](const std::string& value) {
                      learning_.seconds =
                          inRange("--timeout", "whole seconds from 1 to 86400", value, 1, kLongestRun);
                  });

        text(*read_, "--font", "NAME", reading_.font, "the font to read with")->required();
        converted(*read_, "--reject", "LIMIT",
                  "characters read with less confidence are printed as ?; 0 to 1,\nelse 0.2",
                  [this](const std::string& value) {
                      reading_.rejectLimit = inRange("--reject", "a number from 0 to 1", value, 0.0, 1.0);
                  });
        read_
            ->add_flag("--confidence", reading_.showsConfidence,
                       "prints how sure each character is, 0 to 1, behind the text")
            ->disable_flag_override();
        read_
            ->add_flag_callback(
                "--no-context", [this] { reading_.usesContext = false; },
                "reads each character by itself; else those beside it decide\nbetween shapes that hardly "
                "differ, as "
                "O and 0")
            ->disable_flag_override();
        const auto printed = [this](const char* name, ReadOptions::Format one, const char* help) {
            return read_
                ->add_flag_callback(
                    name, [this, one] { reading_.format = one; }, help)
                ->disable_flag_override();
        };
        CLI::Option* csv =
            printed("--csv", ReadOptions::Format::Csv, "prints rows of comma-separated values");
        printed("--json", ReadOptions::Format::Json,
                "prints all that is known of each character: box, confidence,\nalternatives")
            ->excludes(csv);
        CLI::Option* list =
            text(*read_, "--samples", "LIST.tsv", reading_.samples,
                 "reads the images of a list as learn takes it, and compares; the\nexit status is 0 "
                 "when all are right");
        converted(*read_, "--threads", "COUNT", "images read at once, 1 to 256; else one on each processor",
                  [this](const std::string& value) {
                      reading_.threads = inRange("--threads", "a whole number from 1 to 256", value, 1, 256);
                  });
        for (auto& [app, settings] : {std::pair{learn_, &learning_.settings}, {read_, &reading_.settings}})
            addSettings(*app, *settings);
        operands(*read_, "IMAGE", reading_.images,
                 "the images to read; folders of them; - for names on standard\ninput, one a line")
            ->excludes(list);

        fonts_->add_flag("--versions", listsVersions_, "lists what is kept of the font, else of all fonts")
            ->disable_flag_override();
        fonts_
            ->add_option("NAME", versions_.font,
                         "the font whose versions are listed; the page's file behind --report")
            ->type_name("");
        text(*fonts_, "--report", "FONT", report_.font,
             "checks the font and writes a page with what was found, as HTML, to\nthe file that follows")
            ->excludes("--versions");
        text(*fonts_, "--restore", "NAME", restoring_.font,
             "makes the font again of what is kept of it; the font that is\nthere is kept too")
            ->excludes("--versions")
            ->excludes("--report");
        text(*fonts_, "--version", "ID", restoring_.version,
             "the version to restore; else the newest that was saved or deleted")
            ->needs("--restore");
        text(*fonts_, "--as", "NAME", restoring_.as, "restores it as a font of this name")
            ->needs("--restore");

        text(program_, "--theme", "THEME", window_.theme, "the window's colours: light, dark or system")
            ->check([](const std::string& value) {
                return value == "light" || value == "dark" || value == "system"
                           ? std::string()
                           : "takes light, dark or system, not " + value;
            });
        operands(program_, "IMAGE|FOLDER", window_.paths, "what the window opens");
    }

    CommandLine parse(std::vector<std::string> arguments) {
        CLI::App* app = &program_;
        const auto command = arguments.begin() + wordsOfFolder(arguments);
        for (CLI::App* one : {learn_, read_, fonts_})
            if (command != arguments.end() && *command == one->get_name()) app = one;
        if (app != &program_) arguments.erase(command);
        const std::string hint =
            " (see " + (app == &program_ ? kProgram : kProgram + (' ' + app->get_name())) + " --help)";
        const auto wrong = [&](const std::string& problem) { return Notice{problem + hint, 2}; };

        if (app == &program_ && !arguments.empty() && !arguments.front().starts_with('-'))
            if (const auto problem = mistypedCommand(arguments.front())) return wrong(*problem);
        if (const auto problem = prepare(*app, arguments)) return wrong(*problem);
        try {
            // A command is one as the first argument alone, but for the jobs folder; later ones may be names
            // of files.
            for (CLI::App* one : {learn_, read_, fonts_}) one->disabled(app == &program_);
            app->parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
        } catch (const CLI::CallForHelp&) {
            for (CLI::App* one : {learn_, read_, fonts_}) one->disabled(false);
            return Notice{app->help(app == &program_ ? "" : kProgram), 0};
        } catch (const CLI::CallForVersion& version) {
            return Notice{version.what() + std::string(1, '\n'), 0};
        } catch (const CLI::RequiredError&) {
            for (const CLI::Option* option : app->get_options())
                if (option->get_required() && option->count() == 0)
                    return wrong(app->get_name() + " needs " + option->get_name() +
                                 (option->get_positional() ? "" : ' ' + option->get_type_name()));
            throw;
        } catch (const CLI::ExtrasError&) {
            const std::string extra = app->remaining().front();
            return wrong((extra.starts_with('-') ? "unknown option " : "unexpected argument ") + extra);
        } catch (const CLI::ArgumentMismatch& problem) {
            for (const CLI::Option* option : app->get_options())
                if (!option->get_positional() && option->count() > 1)
                    return wrong("option " + option->get_name() + " is given twice");
            return wrong(problem.what());
        } catch (const CLI::ParseError& problem) {
            return wrong(problem.what());
        }
        if (app == &program_) return window(hint);
        if (!report_.font.empty() && versions_.font.empty())
            return wrong("--report needs a file for the page");
        if (!versions_.font.empty() && !listsVersions_ && report_.font.empty())
            return wrong("unexpected argument " + versions_.font);
        return commandParsed(app);
    }

    std::vector<CommandEntry> entries() const {
        std::vector<CommandEntry> all;
        all.push_back(entry(program_));
        const CLI::App& program = program_;
        for (const CLI::App* app : program.get_subcommands([](const CLI::App*) { return true; }))
            all.push_back(entry(*app));
        return all;
    }

  private:
    CLI::App* command(const char* name, const char* about) {
        return program_.add_subcommand(name, about)->group("Commands");
    }

    static CommandEntry entry(const CLI::App& app) {
        const auto oneLine = [](std::string text) {
            std::replace(text.begin(), text.end(), '\n', ' ');
            return text;
        };
        CommandEntry result{app.get_parent() ? app.get_name() : "", oneLine(app.get_description()), "", {}};
        for (const CLI::Option* option : app.get_options()) {
            if (option->get_positional())
                result.operand = option->get_name();
            else
                result.options.push_back({"--" + option->get_lnames().front(),
                                          option->get_items_expected_max() > 0 ? option->get_type_name() : "",
                                          oneLine(option->get_description())});
        }
        return result;
    }

    static CLI::Option* text(CLI::App& app, const char* name, const char* value, auto& target,
                             const char* help) {
        return app.add_option(name, target, help)->type_name(value)->check([](const std::string& given) {
            return trimmed(given).empty() ? "the value is empty" : "";
        });
    }

    // The named value of a choice; `words` are what it may be called.
    template <class Choice>
    static Choice named(std::optional<Choice> value, const char* option, const char* words,
                        const std::string& text) {
        if (!value) throw CLI::ValidationError(std::string(option) + " takes " + words + ", not " + text);
        return *value;
    }

    static void addSettings(CLI::App& app, SettingsOptions& settings) {
        converted(
            app, "--region", "X,Y,W,H[,ANGLE]",
            "looks only there: corner and size in pixels, turned around its\nmiddle by degrees clockwise; "
            "none for the whole image",
            [&settings](const std::string& value) {
                settings.wholeImage = value == "none";
                if (!settings.wholeImage)
                    settings.region = named(engine::regionNamed(value), "--region",
                                            "X,Y,WIDTH,HEIGHT or X,Y,WIDTH,HEIGHT,ANGLE or none", value);
            });
        converted(app, "--polarity", "KIND", "of the print: dark or light on its background, else auto",
                  [&settings](const std::string& value) {
                      settings.polarity =
                          named(engine::polarityNamed(value), "--polarity", "auto, dark or light", value);
                  });
        converted(app, "--print", "KIND", "solid strokes or dots, else auto",
                  [&settings](const std::string& value) {
                      settings.kind =
                          named(engine::printKindNamed(value), "--print", "auto, solid or dots", value);
                  });
        converted(app, "--smallest", "PIXELS",
                  "height of the smallest capitals and figures, 1 to 2000; 0 for\nany",
                  [&settings](const std::string& value) {
                      settings.smallestHeight = inRange("--smallest", "whole pixels from 0 to 2000", value, 0,
                                                        engine::kMostSmallestHeight);
                  });
    }

    static void converted(CLI::App& app, const char* name, const char* value, const char* help,
                          const std::function<void(const std::string&)>& convert) {
        app.add_option_function<std::string>(name, convert, help)->type_name(value);
    }

    static CLI::Option* operands(CLI::App& app, const char* name, std::vector<std::string>& target,
                                 const char* help) {
        return app.add_option(name, target, help)->type_name("");
    }

    // The jobs folder may be named before the command, too: how many words do so.
    static std::ptrdiff_t wordsOfFolder(const std::vector<std::string>& words) {
        if (words.size() > 2 && words.front() == "--jobs") return 2;
        return !words.empty() && words.front().starts_with("--jobs=") ? 1 : 0;
    }

    // What is to be said and done before the parser sees the words: it would take any word that comes next
    // for an option's value, another option too, and an operand in brackets for a list. Returns what
    // is wrong.
    static std::optional<std::string> prepare(const CLI::App& app, std::vector<std::string>& words) {
        bool options = true;
        const auto named = [&](std::string_view word) {
            return options && word.starts_with('-') ? app.get_option_no_throw(std::string(word)) : nullptr;
        };
        for (std::size_t i = 0; i < words.size(); ++i) {
            auto& word = words[i];
            options = options && word != "--";
            const auto equals = word.find('=');
            const auto name = word.substr(0, equals);
            const CLI::Option* option = named(name);
            if (!option) {
                if (word.starts_with('[') && word.ends_with(']')) word.insert(0, "./");
            } else if (option->get_items_expected_max() > 0) {
                const bool apart = equals == std::string::npos;
                if (apart ? i + 1 == words.size() || named(words[i + 1]) : equals + 1 == word.size())
                    return "option " + name + " needs a value";
                if (apart) ++i;
            } else if (equals != std::string::npos) {
                return "no value goes with option " + name;
            }
        }
        return std::nullopt;
    }

    JobFolder folder() const { return jobs_.empty() ? JobFolder() : JobFolder(jobs_); }

    CommandLine commandParsed(const CLI::App* app) {
        if (app == read_ && reading_.images.empty() && reading_.samples.empty())
            return Notice{std::string("read needs IMAGE or --samples (see ") + kProgram + " read --help)", 2};
        learning_.folder = reading_.folder = versions_.folder = restoring_.folder = folder();
        if (!characters_.empty()) learning_.characters = characters_;
        if (app == learn_) return learning_;
        if (app == read_) return reading_;
        if (!restoring_.font.empty()) return restoring_;
        if (!report_.font.empty()) return ReportOptions{report_.font, versions_.font, folder()};
        if (listsVersions_) return versions_;
        return FontsOptions{folder()};
    }

    // The window, unless none of its paths exists.
    CommandLine window(const std::string& hint) {
        window_.folder = folder();
        const auto& paths = window_.paths;
        if (paths.empty()) return window_;
        if (const auto problem = mistypedCommand(paths.front())) return Notice{*problem + hint, 2};
        if (std::any_of(paths.begin(), paths.end(), exists)) return window_;
        std::string names;
        for (const auto& path : paths) names += (names.empty() ? "" : ", ") + path;
        return Notice{names + ": no such file or folder", 1};
    }

    // True also for what cannot be looked at: the window says why.
    static bool exists(const std::string& path) {
        std::error_code error;
        return std::filesystem::status(toPath(path), error).type() != std::filesystem::file_type::not_found;
    }

    // A word that is neither a path nor the name of a file was meant as a command.
    static std::optional<std::string> mistypedCommand(const std::string& word) {
        if (exists(word) || word.find_first_of("./\\*?") != std::string::npos) return std::nullopt;
        return word + " is no command, image or folder; the commands are learn, read and fonts";
    }

    CLI::App program_;
    CLI::App* learn_;
    CLI::App* read_;
    CLI::App* fonts_;
    std::string jobs_;
    std::string characters_;
    LearnOptions learning_;
    ReadOptions reading_;
    bool listsVersions_ = false;
    VersionsOptions versions_;
    RestoreOptions restoring_;
    ReportOptions report_;
    WindowOptions window_;
};

}  // namespace

CommandLine parseCommandLine(const std::vector<std::string>& arguments) {
    return OptionTable().parse(arguments);
}

std::vector<CommandEntry> commandTable() {
    return OptionTable().entries();
}

int runCommand(const CommandLine& line, const engine::ImageDecoder& decoder, const CommandStreams& streams) {
    try {
        int status = 0;
        if (const auto* notice = std::get_if<Notice>(&line)) {
            status = notice->status;
            if (status == 0)
                streams.out << notice->text;
            else
                streams.problem(notice->text);
        } else if (const auto* learning = std::get_if<LearnOptions>(&line)) {
            status = learnFont(*learning, decoder, streams);
        } else if (const auto* reading = std::get_if<ReadOptions>(&line)) {
            status = readImages(*reading, decoder, streams);
        } else if (const auto* fonts = std::get_if<FontsOptions>(&line)) {
            status = listFonts(*fonts, streams);
        } else if (const auto* versions = std::get_if<VersionsOptions>(&line)) {
            status = listVersions(*versions, streams);
        } else if (const auto* restoring = std::get_if<RestoreOptions>(&line)) {
            status = restoreVersion(*restoring, streams);
        } else if (const auto* report = std::get_if<ReportOptions>(&line)) {
            status = reportFont(*report, streams);
        } else {
            throw Failure(RuntimeError::InternalError, "The window is no command");
        }
        streams.out.flush();
        if (streams.out) return status;
        streams.problem("the results cannot be written");
    } catch (...) {
        streams.problem(currentFailure().description());
    }
    return 1;
}

}  // namespace dravik::trainer
