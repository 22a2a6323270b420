// The texts of images: what the operator included or what a list of samples says. They are kept in a list of
// the jobs folder, which `learn --samples` can read, so that no label is lost with a font.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace dravik::trainer {

class LabelBook {
  public:
    // Reads the file where there is one. Of one that cannot be read problem() says why; it stays beside the
    // next one, as the file's previous version.
    explicit LabelBook(std::string file);

    const std::string& problem() const noexcept { return problem_; }

    std::optional<std::string> text(const std::string& image) const;
    // `image` is a whole path.
    void set(const std::string& image, const std::string& text);
    // Images with a text, in the order of their paths.
    std::vector<std::string> images() const;

    // Takes all texts of a list; raises SampleListError. Returns how many.
    std::size_t open(const std::string& list);
    // Writes the texts of those of the images that have one as a list, with paths from its folder where they
    // lie in it. Raises Failure. Returns how many.
    std::size_t save(const std::string& list, const std::vector<std::string>& images) const;

    // There are texts that the file lacks.
    bool isChanged() const noexcept { return kept_ != version_; }
    // Work for any thread that writes the file as the texts are now; it raises Failure. kept() is told what
    // version it wrote.
    std::function<void()> keepingWork() const;
    int version() const noexcept { return version_; }
    void kept(int version) noexcept {
        kept_ = version;
        problem_.clear();
    }

  private:
    std::string content(const std::string& list, const std::vector<std::string>& images,
                        std::size_t& written) const;

    const std::string file_;
    std::map<std::string, std::string> texts_;
    std::string problem_;
    int version_ = 0, kept_ = 0;
};

}  // namespace dravik::trainer
