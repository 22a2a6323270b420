// A folder of its own for one test, with the parts and lists that the test puts there and a jobs folder;
// removed afterwards. Runs the program's commands in it.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "base/JobFolder.h"
#include "trainer/OpenedParts.h"

namespace dravik::test {

struct CommandResult {
    int status = 0;
    std::vector<std::string> out;  // lines
    std::vector<std::string> err;
};

class Workspace {
  public:
    Workspace();
    Workspace(const Workspace&) = delete;
    Workspace& operator=(const Workspace&) = delete;
    ~Workspace();

    std::string path(const std::string& name) const;
    std::string jobs() const { return path("jobs"); }
    std::string fontFile(const std::string& font) const;

    // The path of the part drawn.
    std::string draw(const std::string& name, const std::string& text, int height = 40) const;
    std::string write(const std::string& name, const std::string& content) const;
    static std::string content(const std::string& file);

    // A command with this workspace's jobs folder.
    CommandResult run(std::vector<std::string> arguments, const ImageDecoder& decoder) const;
    CommandResult run(std::vector<std::string> arguments) const;
    // Learns `font` from three drawings of "0123456789".
    CommandResult learnDigits(const std::string& font) const;

  private:
    std::filesystem::path folder_;
};

// The lines of a text, without their ends.
std::vector<std::string> linesOf(const std::string& text);

}  // namespace dravik::test
