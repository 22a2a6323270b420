// A folder of its own for one test, with the parts and lists that the test puts there and a jobs folder;
// removed afterwards. Runs the program's commands in it.
#pragma once

#include "base/JobFolder.h"
#include "engine/image/ImageDecoder.h"
#include "support/Testing.h"
#include "trainer/commands/CommandLine.h"
#include "trainer/support/PgmFile.h"

namespace dravik::test {

using namespace engine;
using namespace trainer;
using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

struct CommandResult {
    int status = 0;
    std::vector<std::string> out;  // lines
    std::vector<std::string> err;
};

class Workspace {
  public:
    std::string path(const std::string& name) const { return folder_.path(name); }
    std::string jobs() const { return path("jobs"); }
    std::string fontFile(const std::string& font) const;
    void makeFolder(const std::string& name) const { std::filesystem::create_directory(toPath(path(name))); }

    // The path of the part drawn, `scale` pixels a dot of its dot pattern.
    std::string draw(const std::string& name, const std::string& text, int scale = 6) const;
    std::string write(const std::string& name, const std::string& content) const;
    static std::string content(const std::string& file);

    // A command with this workspace's jobs folder.
    CommandResult run(std::vector<std::string> arguments, const ImageDecoder& decoder = readPgm) const;
    // Learns `font` from three drawings of "0123456789".
    CommandResult learnDigits(const std::string& font) const;

  private:
    TemporaryFolder folder_;
};

// The program's command line, parsed and run.
CommandResult runWords(const std::vector<std::string>& words, const ImageDecoder& decoder = readPgm);

}  // namespace dravik::test
