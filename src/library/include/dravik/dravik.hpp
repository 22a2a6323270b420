/**
 * @file dravik.hpp
 * @brief The library for C++20: objects that free themselves, failures as exceptions. A thin layer over
 * dravik.h, compiled into the program that includes it, so that the two need not be built by the same
 * compiler.
 */
#ifndef DRAVIK_HPP
#define DRAVIK_HPP

#include <dravik/dravik.h>

#include <cstddef>
#include <cstdint>
#include <exception>
#include <functional>
#include <memory>
#include <new>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

namespace dravik {

/** @brief What a call of the library has reported. */
class Error : public std::runtime_error {
  public:
    explicit Error(const dravik_error& error) : std::runtime_error(error.text), status_(error.status) {}
    dravik_status status() const noexcept { return status_; }

  private:
    dravik_status status_;
};

namespace detail {

struct Free {
    void operator()(dravik_settings* one) const noexcept { dravik_settings_free(one); }
    void operator()(dravik_font* one) const noexcept { dravik_font_free(one); }
    void operator()(dravik_reading* one) const noexcept { dravik_reading_free(one); }
    void operator()(dravik_verification* one) const noexcept { dravik_verification_free(one); }
    void operator()(dravik_learner* one) const noexcept { dravik_learner_free(one); }
};
template <class Handle>
using Owner = std::unique_ptr<Handle, Free>;

/* Calls a function whose last argument is the error; raises what it reports. */
template <class Function, class... Arguments>
void call(Function&& function, Arguments&&... arguments) {
    dravik_error error;
    if (function(std::forward<Arguments>(arguments)..., &error) != DRAVIK_OK) throw Error(error);
}

/* The same for one whose result stands before the error. */
template <class Handle, class Function, class... Arguments>
Owner<Handle> made(Function&& function, Arguments&&... arguments) {
    Handle* handle = nullptr;
    call(function, std::forward<Arguments>(arguments)..., &handle);
    return Owner<Handle>(handle);
}

inline const char* orNull(const std::optional<std::string>& text) {
    return text ? text->c_str() : nullptr;
}

}  // namespace detail

using Box = dravik_box;
using Training = dravik_training;
using Check = dravik_check;

/** @brief A grey image that the caller keeps while it is read. */
struct Image : dravik_image {
    Image(const std::uint8_t* pixels, int width, int height) : Image(pixels, width, height, width) {}
    Image(const std::uint8_t* pixels, int width, int height, std::ptrdiff_t stride)
        : dravik_image{pixels, width, height, stride} {}
};

/** @brief How images are looked at and read; what is not set is as the font's own settings say. */
class Settings {
  public:
    Settings() : handle_(dravik_settings_new()) {
        if (!handle_) throw std::bad_alloc();
    }
    Settings& region(const Box& box) {
        detail::call(dravik_settings_set_region, handle_.get(), &box);
        return *this;
    }
    Settings& wholeImage() {
        detail::call(dravik_settings_set_region, handle_.get(), nullptr);
        return *this;
    }
    /** @brief The sides before it is turned around its middle, in pixels, and the angle in degrees clockwise.
     */
    Settings& turnedRegion(double left, double top, double width, double height, double angle) {
        detail::call(dravik_settings_set_turned_region, handle_.get(), left, top, width, height, angle);
        return *this;
    }
    Settings& polarity(dravik_polarity polarity) {
        detail::call(dravik_settings_set_polarity, handle_.get(), polarity);
        return *this;
    }
    Settings& print(dravik_print print) {
        detail::call(dravik_settings_set_print, handle_.get(), print);
        return *this;
    }
    Settings& smallestHeight(int pixels) {
        detail::call(dravik_settings_set_smallest_height, handle_.get(), pixels);
        return *this;
    }
    Settings& rejectLimit(double limit) {
        detail::call(dravik_settings_set_reject_limit, handle_.get(), limit);
        return *this;
    }
    const dravik_settings* handle() const noexcept { return handle_.get(); }

  private:
    detail::Owner<dravik_settings> handle_;
};

/** @brief A reading beside the text that was expected. Views into it live as long as it does. */
class Verification {
  public:
    explicit Verification(detail::Owner<dravik_verification> handle) : handle_(std::move(handle)) {}
    bool passed() const noexcept { return dravik_verification_passed(handle_.get()) != 0; }
    std::span<const dravik_verified> characters() const noexcept {
        std::size_t count = 0;
        const dravik_verified* first = dravik_verification_characters(handle_.get(), &count);
        return {first, count};
    }

  private:
    detail::Owner<dravik_verification> handle_;
};

/** @brief What was read in an image. Views into it live as long as it does. */
class Reading {
  public:
    explicit Reading(detail::Owner<dravik_reading> handle) : handle_(std::move(handle)) {}
    std::string_view text() const noexcept { return dravik_reading_text(handle_.get()); }
    std::span<const dravik_character> characters() const noexcept {
        std::size_t count = 0;
        const dravik_character* first = dravik_reading_characters(handle_.get(), &count);
        return {first, count};
    }
    Verification verify(const std::string& expected) const {
        return Verification(
            detail::made<dravik_verification>(dravik_reading_verify, handle_.get(), expected.c_str()));
    }

  private:
    detail::Owner<dravik_reading> handle_;
};

/** @brief A trained font. Any number of threads may read with it at once. */
class Font {
  public:
    /** @brief Opens a font file. */
    explicit Font(const std::string& file)
        : handle_(detail::made<dravik_font>(dravik_font_open, file.c_str())) {}
    /** @brief Opens a font by its name in a jobs folder, the user's when none is given. */
    static Font named(const std::string& name, const std::optional<std::string>& jobs = {}) {
        return Font(detail::made<dravik_font>(dravik_font_open_named, detail::orNull(jobs), name.c_str()));
    }
    std::string_view characters() const noexcept { return dravik_font_characters(handle_.get()); }
    Reading read(const dravik_image& image) const { return read(image, nullptr); }
    Reading read(const dravik_image& image, const Settings& settings) const {
        return read(image, settings.handle());
    }

  private:
    explicit Font(detail::Owner<dravik_font> handle) : handle_(std::move(handle)) {}
    Reading read(const dravik_image& image, const dravik_settings* settings) const {
        return Reading(detail::made<dravik_reading>(dravik_font_read, handle_.get(), &image, settings));
    }

    detail::Owner<dravik_font> handle_;
};

/** @brief A font that is being taught. */
class Learner {
  public:
    /** @brief Takes the font of that name in a jobs folder, the user's when none is given; makes it when it
     * is missing. */
    explicit Learner(const std::string& name, const std::optional<std::string>& jobs = {})
        : handle_(detail::made<dravik_learner>(dravik_learner_open, detail::orNull(jobs), name.c_str())) {}

    /** @brief Returns how many samples were included. */
    int include(const dravik_image& image, const std::string& text) { return include(image, text, nullptr); }
    int include(const dravik_image& image, const std::string& text, const Settings& settings) {
        return include(image, text, settings.handle());
    }
    /** @brief The font keeps what is set, but for the limit, and goes by it wherever no others are given. */
    void keepSettings(const Settings& settings) {
        detail::call(dravik_learner_keep_settings, handle_.get(), settings.handle());
    }
    /** @brief Trains within a limit in seconds, 0 for a minute. `progress` returns true to stop; what it
     * raises stops the training too and is raised again. */
    Training train(int seconds = 0, const std::function<bool(const Training&)>& progress = {}) {
        Watch watch{progress, nullptr};
        Training training{};
        dravik_error error;
        const dravik_status status = dravik_learner_train(
            handle_.get(), seconds, progress ? &Watch::ask : nullptr, &watch, &training, &error);
        if (watch.failure) std::rethrow_exception(watch.failure);
        if (status != DRAVIK_OK) throw Error(error);
        return training;
    }
    /** @brief Waits for the check that follows each training. */
    Check check() {
        Check check{};
        detail::call(dravik_learner_check, handle_.get(), &check);
        return check;
    }
    void save() { detail::call(dravik_learner_save, handle_.get()); }

  private:
    struct Watch {
        const std::function<bool(const Training&)>& progress;
        std::exception_ptr failure;
        static int ask(const dravik_training* soFar, void* user) noexcept {
            auto& watch = *static_cast<Watch*>(user);
            try {
                return watch.progress(*soFar) ? 1 : 0;
            } catch (...) {
                watch.failure = std::current_exception();
                return 1;
            }
        }
    };

    int include(const dravik_image& image, const std::string& text, const dravik_settings* settings) {
        std::int32_t samples = 0;
        detail::call(dravik_learner_include, handle_.get(), &image, settings, text.c_str(), &samples);
        return samples;
    }

    detail::Owner<dravik_learner> handle_;
};

}  // namespace dravik

#endif
