// Asked before an include that may be a mistake: characters look clearly like others than those that were
// typed, or the image is included already. Enter and Escape do not include.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "ui/Form.h"
#include "ui/Label.h"

namespace dravik::trainer {

struct Contradiction {
    std::size_t place = 0;  // in reading order, from 0
    std::string typed;
    std::string seen;
};

// "5th"
std::string ordinal(std::size_t place);
// "5th character: typed B, looks like 8"
std::string contradictionText(const Contradiction& one);

class IncludeQuestion : public ui::Form {
  public:
    explicit IncludeQuestion(const std::vector<Contradiction>& found);
    // `what` is included already.
    IncludeQuestion(const std::string& what, const std::string& font);

    // The operator wants it all the same.
    bool includes() const noexcept { return includes_; }

  private:
    IncludeQuestion(const std::string& title, const std::vector<std::string>& found,
                    const std::string& question, const std::string& otherwise);

    std::vector<std::unique_ptr<ui::Label>> lblFound;
    ui::Label lblQuestion{"lblQuestion"};
    ui::Button cmdInclude{"cmdInclude", "&Include"};
    ui::Button CancelButton{"CancelButton", ""};
    bool includes_ = false;
};

}  // namespace dravik::trainer
