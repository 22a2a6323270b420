// Image > Read All: every opened image read with the font as it is, in a table with the most doubtful on
// top; from there to the image, and to a file.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "trainer/ReadAll.h"
#include "ui/Bars.h"
#include "ui/Button.h"
#include "ui/Form.h"
#include "ui/Grid.h"
#include "ui/Label.h"

namespace dravik::trainer {

class ReadAllForm : public ui::Form {
  public:
    using OpenImage = std::function<void(const std::string& path)>;
    // A file for the readings, "" when the operator cancels.
    using AskForFile = std::function<std::string()>;

    ReadAllForm(OpenImage openImage, AskForFile askForFile);

    ui::Label lblSummary{"lblReadAllSummary"};
    ui::ProgressBar progress{"readAllProgress"};
    ui::Grid grid{"readAllGrid"};
    ui::Button cmdOpen{"cmdReadAllOpen", "&Open Image"};
    ui::Button cmdExport{"cmdReadAllExport", "&Export..."};
    ui::Button cmdStop{"cmdReadAllStop", "&Stop"};
    ui::Button cmdClose{"cmdReadAllClose", "Close"};
    ui::Timer tmrRead{"tmrReadAll", 50};

    // Begins anew, with nothing listed.
    void start(std::unique_ptr<ReadAll> reading);
    // Takes what has been read; the timer's tick.
    void takeRead();

    // The most doubtful first: not read or refused, wrong, and then by the confidence of the least sure
    // character.
    const std::vector<ImageReading>& readings() const noexcept { return readings_; }
    // Writes them as `read --csv` or, for a name that ends in .json, `read --json` does. Raises as
    // writeWholeFile().
    void write(const std::string& file) const;

  private:
    void list();
    void openChosen();
    void exportAll();

    const OpenImage openImage_;
    const AskForFile askForFile_;
    std::unique_ptr<ReadAll> reading_;  // null once it has ended
    std::size_t count_ = 0;
    std::vector<ImageReading> readings_;
};

}  // namespace dravik::trainer
