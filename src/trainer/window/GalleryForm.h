// The gallery: pictures of the font's samples, the worst first, to be looked at, deleted, relabelled and
// traced back to their images. It follows what is pointed at in the samples grid and in a histogram, and the
// character whose menu is opened in the overview.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "trainer/Trainer.h"
#include "trainer/window/GallerySamples.h"
#include "ui/Button.h"
#include "ui/Form.h"
#include "ui/Label.h"
#include "ui/ListControls.h"
#include "ui/PictureGrid.h"

namespace dravik::trainer {

class GalleryForm : public ui::Form {
  public:
    // Shows an image that is still there, with a place in it.
    using ShowPlace = std::function<void(const std::string& image, const engine::Region& box)>;

    // The trainer outlives the form.
    GalleryForm(Trainer& trainer, ShowPlace showPlace);

    ui::Label lblShown{"lblGalleryShown", "Samples of"};
    ui::ComboBox cboShown{"cboGalleryShown"};
    ui::Label lblCount{"lblGalleryCount"};
    ui::Button cmdSource{"cmdGallerySource", "Where From"};
    ui::Button cmdDelete{"cmdGalleryDelete", "Delete"};
    ui::PictureGrid pictures{"galleryPictures"};

    // Nothing is worked out while nobody sees it.
    bool isShown() const noexcept { return isShown_; }
    void setShown(bool shown);
    ui::Signal<> shownChanged;
    void show(ShownSamples shown);
    const ShownSamples& shown() const noexcept { return shown_; }

    // Of more selected rows of the grid than this all samples are shown.
    static constexpr int kMostRows = 1000;

    // The selected ones, or the current one when none is selected. Acts that can be undone; what came of them
    // is said where the program says what was done.
    void deleteSelected();
    void relabelSelected(const std::string& character);
    void showSource();

  private:
    void follow();
    void followGrid();
    void tellGrid();
    void refresh();
    void takeSamples(engine::SampleColumnsPtr samples);
    void showChoices();
    void showCount();
    std::vector<int> chosen() const;
    std::vector<std::int32_t> identifiers() const;

    Trainer& trainer_;
    const ShowPlace showPlace_;
    ShownSamples shown_;
    engine::SampleColumnsPtr samples_;  // as they are shown, null before the first time
    std::shared_ptr<const GallerySamples> source_;
    // Of all samples that there are, which others are chosen from time and again.
    engine::SampleColumnsPtr present_;
    std::map<std::int32_t, int> counts_;
    std::shared_ptr<const GallerySamples> all_;
    std::vector<std::int32_t> choices_;  // the codes behind "all" in cboShown
    std::size_t misread_ = 0;            // in the last check
    std::string font_;                   // whose samples are shown
    bool isShown_ = false;
    bool isFollowing_ = false;
    std::vector<ui::Connection> connections_;
};

}  // namespace dravik::trainer
