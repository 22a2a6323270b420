// Print as it leaves the printer: how much ink lies on each point, and which character put it there.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace dravik {

struct PrintedCharacter {
    std::string character;
    int line = 0;
    int index = 0;  // in its line, blanks counted
};

class Print {
  public:
    Print(int width, int height)
        : width_(width), height_(height), ink_(count()), whole_(count()), owners_(count(), -1) {}

    int width() const { return width_; }
    int height() const { return height_; }
    // 0 none to 1 full; outside there is none.
    float ink(int x, int y) const { return inside(x, y) ? ink_[at(x, y)] : 0.0f; }
    int owner(int x, int y) const { return owners_[at(x, y)]; }
    // The ink that characters would have with dots that run together and without damage.
    float whole(int x, int y) const { return inside(x, y) ? whole_[at(x, y)] : 0.0f; }

    // Adds ink of the character numbered `owner`.
    void put(int x, int y, float amount, int owner) {
        if (!inside(x, y) || amount <= 0) return;
        float& here = ink_[at(x, y)];
        if (amount > here) here = amount;
        if (amount > 0.4f) owners_[at(x, y)] = owner;
        if (owner < static_cast<int>(characters.size())) putWhole(x, y, amount);
    }
    // A round pen's stroke, or a dot where both ends are the same. Units are pixels.
    void stroke(float x0, float y0, float x1, float y1, float radius, float amount, int owner);
    // A stroke of what a character would be as a whole, without ink.
    void wholeStroke(float x0, float y0, float x1, float y1, float radius);
    // Takes ink away along a stroke.
    void scrape(float x0, float y0, float x1, float y1, float radius);
    // Makes all strokes wider (positive) or thinner (negative) by about so many pixels on each side.
    void spread(float pixels);

    std::vector<PrintedCharacter> characters;
    std::vector<float> baselines;  // of each line
    float capHeight = 0;

  private:
    std::size_t count() const { return static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_); }
    bool inside(int x, int y) const { return x >= 0 && y >= 0 && x < width_ && y < height_; }
    std::size_t at(int x, int y) const {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) + static_cast<std::size_t>(x);
    }
    template <typename Act>
    void along(float x0, float y0, float x1, float y1, float radius, Act act);

    void putWhole(int x, int y, float amount) {
        float& here = whole_[at(x, y)];
        if (amount > here) here = amount;
    }

    int width_, height_;
    std::vector<float> ink_, whole_;
    std::vector<int> owners_;
};

}  // namespace dravik
