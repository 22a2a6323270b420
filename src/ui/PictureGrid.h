// A virtual list of small grey pictures with a line of words below each, side by side in as many columns as
// fit: it holds a source that gives what is seen when asked. It knows where each stands, which are selected,
// and what keys and the mouse do to that; a backend shows it and hands it the operator's input.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "ui/KeyMove.h"
#include "ui/Widget.h"

namespace dravik::ui {

struct GreyPicture {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> levels;  // row by row, 0 black to 255 white; empty for none
};

struct PictureItem {
    GreyPicture picture;
    std::string caption;  // also in place of a picture that is not there
    std::string note;     // at the right of the caption
    bool warns = false;   // of the note
    std::string tip;      // all there is to say
};

// What a grid of pictures shows. Immutable while a grid holds it.
class PictureSource {
  public:
    PictureSource() = default;
    PictureSource(const PictureSource&) = delete;
    PictureSource& operator=(const PictureSource&) = delete;
    virtual ~PictureSource() = default;

    virtual int count() const = 0;
    virtual PictureItem item(int index) const = 0;
};

class PictureGrid : public Widget {
  public:
    // In 1/96 inch.
    static constexpr int kItemWidth = 64;
    static constexpr int kItemHeight = 68;
    static constexpr int kPictureSide = 44;
    static constexpr int kPadding = 4;

    explicit PictureGrid(std::string name)
        : Widget(WidgetKind::PictureGrid, std::move(name), kWindowColor, kWindowTextColor) {}

    // Nothing is selected then; the current one is the first.
    void setSource(std::shared_ptr<const PictureSource> source);
    int count() const { return source_ ? source_->count() : 0; }
    // Of one that exists.
    PictureItem item(int index) const { return source_->item(index); }

    // -1 when there is none.
    int current() const noexcept { return current_; }
    bool isSelected(int index) const;
    // Ascending.
    std::vector<int> selected() const;
    // Ascending, of those that exist; the first becomes current and is scrolled into view.
    void select(const std::vector<int>& indexes);
    void selectAll();
    // A click on one, with the shift state: alone, up to it (Shift), or it too (Ctrl).
    void choose(int index, int shift);
    // A key: Shift extends the selection, Ctrl leaves it.
    void move(KeyMove move, int shift);

    // Of the view, in its units of 1/96 inch x `unit`.
    void setView(int width, int height, double unit);
    struct Scroll {
        int position = 0;
        int most = 0;
        int page = 1;
        int line = 1;
    };
    Scroll scroll() const;
    // Cut to what there is.
    void scrollTo(int position);
    struct Place {
        double left = 0;
        double top = 0;
        double width = 0;
        double height = 0;
    };
    Place itemPlace(int index) const;
    // -1 beside all of them.
    int itemAt(double x, double y) const;
    // Those that are seen at least in part: the first, and the one behind the last.
    struct Range {
        int first = 0;
        int end = 0;
    };
    Range seen() const;

    // Selection tells of the current one, of what is selected and of scrolling. The operator has selected
    // another:
    Signal<> selectionChanged;
    // Enter or a double click on the current one.
    Signal<> opened;
    // A character was typed.
    Signal<const std::string&> typed;

  private:
    int columns() const;
    double itemWidth() const { return kItemWidth * unit_; }
    double itemHeight() const { return kItemHeight * unit_; }
    void selectRange(int from, int to);
    void reveal(int index);
    void tell();

    std::shared_ptr<const PictureSource> source_;
    std::vector<bool> selected_;
    int current_ = -1;
    int anchor_ = -1;  // from which Shift extends
    int width_ = 0;
    int height_ = 0;
    double unit_ = 1;
    int scroll_ = 0;
};

}  // namespace dravik::ui
