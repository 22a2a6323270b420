// How good the engine is at finding and reading characters.
//
//     dravik_evaluate
//         reads the sample parts with fonts learnt from the sample sheets
//     dravik_evaluate read CHARSETS LINES [SHEETS]
//         the same with other folders, for instance those of dravik_generate; each font learnt from so many
//         sheets; how many wrong labels are pointed out before an include
//     dravik_evaluate suggest [-v] LINES...
//         reads without any font; -v shows what was read wrongly
//     dravik_evaluate count [-v] FOLDER...
//         images with the exact number of characters, by tier and kind; -v names the others
//     dravik_evaluate scenes [-v] FOLDER...
//         the same of pictures of whole parts, by what stands beside the print
//     dravik_evaluate kernels CHARSETS LINES
//         whether boxes and texts depend on the machine's instruction set
//     dravik_evaluate include [-v] FOLDER...
//         images that are taken with their text, freely or with its help, and with wrong texts
//     dravik_evaluate fit cuts|joins|print|choice FOLDER...
//         fits the weights that cut touching characters, join parts, drop dirt, or choose the segmentation
//     dravik_evaluate shared FOLDER
//         the other data sets: digits, pages, a photograph
#include <cstdio>
#include <exception>
#include <filesystem>
#include <string>
#include <vector>

#include "evaluate/ChoiceFitting.h"
#include "evaluate/Counting.h"
#include "evaluate/KernelComparison.h"
#include "evaluate/PieceFitting.h"
#include "evaluate/ReadingBack.h"
#include "evaluate/ReadingWithoutFont.h"
#include "evaluate/TypedTexts.h"

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    const std::string what = arguments.empty() ? "read" : arguments[0];
    try {
        if (what == "count" && arguments.size() > 1) {
            const bool verbose = arguments[1] == "-v";
            for (std::size_t i = verbose ? 2 : 1; i < arguments.size(); ++i)
                dravik::countFolder(arguments[i], verbose);
        } else if (what == "scenes" && arguments.size() > 1) {
            const bool verbose = arguments[1] == "-v";
            for (std::size_t i = verbose ? 2 : 1; i < arguments.size(); ++i)
                dravik::countScenes(arguments[i], verbose);
        } else if (what == "suggest" && arguments.size() > 1) {
            const bool verbose = arguments[1] == "-v";
            for (std::size_t i = verbose ? 2 : 1; i < arguments.size(); ++i)
                dravik::readWithoutFonts(arguments[i], verbose);
        } else if (what == "kernels" && arguments.size() == 3) {
            dravik::compareKernels(arguments[1], arguments[2]);
        } else if (what == "include" && arguments.size() > 1) {
            const bool verbose = arguments[1] == "-v";
            for (std::size_t i = verbose ? 2 : 1; i < arguments.size(); ++i)
                dravik::includeFolder(arguments[i], verbose);
        } else if (what == "fit" && arguments.size() > 2 &&
                   (arguments[1] == "cuts" || arguments[1] == "joins" || arguments[1] == "print" ||
                    arguments[1] == "choice")) {
            const std::vector<std::string> folders(arguments.begin() + 2, arguments.end());
            if (arguments[1] == "cuts") dravik::fitCuts(folders);
            if (arguments[1] == "joins") dravik::fitJoins(folders);
            if (arguments[1] == "print") dravik::fitPrint(folders);
            if (arguments[1] == "choice") dravik::fitChoice(folders);
        } else if (what == "shared" && arguments.size() == 2) {
            dravik::countShared(arguments[1]);
        } else if (what == "read" &&
                   (arguments.size() == 3 || arguments.size() == 4 || arguments.size() < 2)) {
            const std::string parts = std::string(DRAVIK_SOURCE_DIR) + "/data/parts/";
            dravik::readBack(arguments.size() > 2 ? arguments[1] : parts + "rendered_charset",
                             arguments.size() > 2 ? arguments[2] : parts + "rendered_lines",
                             arguments.size() > 3 ? std::stoi(arguments[3]) : 1'000'000);
        } else {
            std::fprintf(stderr,
                         "usage: dravik_evaluate [read CHARSETS LINES [SHEETS] | suggest [-v] LINES... | "
                         "count [-v] FOLDER... | scenes [-v] FOLDER... | kernels CHARSETS LINES | "
                         "include [-v] FOLDER... | fit "
                         "cuts|joins|print|choice FOLDER... | shared FOLDER]\n");
            return 2;
        }
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return 1;
    }
}
