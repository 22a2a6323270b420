#include "drivers/pictures/Pictures.h"

#include <filesystem>
#include <iostream>

#include "base/Failure.h"
#include "base/Paths.h"
#include "drivers/ScriptedSession.h"

namespace dravik::test {
namespace {

constexpr char kUsage[] = R"(usage: dravik-pictures story PICTURES IMAGE...
       dravik-pictures guide PICTURES PARTS

story  works the trainer's window by script: teaches a font from all images but
       the last and reads that; their texts stand in lines.tsv beside them
guide  the same with the sample parts in the folder PARTS and every form: the
       pictures of the operator guide

The pictures go to the folder PICTURES. Fonts and settings of whoever runs it
are not touched.
)";

// The sample parts that the guide's pictures show: all but the last teach.
std::vector<std::string> guideParts(const std::string& parts) {
    std::vector<std::string> paths;
    for (const char* number : {"0", "1", "2"})
        paths.push_back(parts + "/rendered_charset/hack_00" + number + ".png");
    for (const char* number : {"1", "2", "3", "4", "5", "6", "7", "0"})
        paths.push_back(parts + "/rendered_lines/hack_00" + number + ".png");
    return paths;
}

}  // namespace

int makePictures(const std::vector<std::string>& arguments, WindowDriver& driver, trainer::Trainer& trainer) {
    const bool guide = arguments.size() == 3 && arguments[0] == "guide";
    if (!guide && (arguments.size() < 3 || arguments[0] != "story")) {
        std::cerr << kUsage;
        return 2;
    }
    const std::string& folder = arguments[1];
    try {
        std::filesystem::create_directories(toPath(folder));
        if (guide)
            ScriptedSession(driver, trainer, folder, std::cout, ScriptedSession::Kind::Guide)
                .run(guideParts(arguments[2]));
        else
            ScriptedSession(driver, trainer, folder, std::cout).run({arguments.begin() + 2, arguments.end()});
    } catch (...) {
        std::cerr << "the session did not come out: " << currentFailure().description() << std::endl;
        return 1;
    }
    std::cout << "Everything came out. Pictures are in " << folder << std::endl;
    return 0;
}

}  // namespace dravik::test
