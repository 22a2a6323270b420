/**
 * @file dravik.h
 * @brief Reads images with fonts of the Dravik OCR tool, and teaches them.
 *
 * Objects are opaque. Who gets one frees it with the function of its name (`dravik_font_free` ...), which
 * takes null. Texts are UTF-8 and end in a zero byte; those that a function returns belong to the object that
 * they are asked of and live as long.
 *
 * A function that can fail returns a #dravik_status and fills in the #dravik_error that it is given, which
 * may be null. It never ends the program or lets an exception out, and changes its results only when it
 * returns #DRAVIK_OK.
 *
 * A #dravik_font does not change: any number of threads may read with the same one at once, without locks.
 * Every other object is for one thread at a time.
 *
 * Structures and numbers of this header stay as they are for as long as the library is `libdravik.so.0`; what
 * comes later gets functions of its own.
 */
#ifndef DRAVIK_H
#define DRAVIK_H

#include <stddef.h>
#include <stdint.h>

#if defined(_WIN32) && defined(DRAVIK_BUILDS_LIBRARY)
#define DRAVIK_API __declspec(dllexport)
#elif defined(_WIN32)
#define DRAVIK_API __declspec(dllimport)
#else
#define DRAVIK_API __attribute__((visibility("default")))
#endif

#ifdef __cplusplus
extern "C" {
#endif
/* This is C. NOLINTBEGIN(modernize-use-using) */

/** @brief How a call ended. */
typedef enum dravik_status {
    DRAVIK_OK = 0,
    DRAVIK_BAD_ARGUMENT = 1,   /**< a null pointer, a size or number out of range, a text that is not UTF-8 */
    DRAVIK_NOT_FOUND = 2,      /**< there is no such file or font */
    DRAVIK_NO_ACCESS = 3,      /**< the system refuses the file, the disk is full or broken */
    DRAVIK_DAMAGED = 4,        /**< the file is no font, cut off, damaged or of a later version */
    DRAVIK_NOT_TRAINED = 5,    /**< the font has samples at most and cannot read */
    DRAVIK_COUNT_MISMATCH = 6, /**< another number of characters was found than the text has */
    DRAVIK_NO_CHARACTERS = 7,  /**< nothing to include, or nothing to train from */
    DRAVIK_NO_RESULT = 8,      /**< the training was stopped, or ended without a result */
    DRAVIK_NO_MEMORY = 9,
    DRAVIK_INTERNAL = 10 /**< a fault of the library */
} dravik_status;

/** @brief What went wrong, in words. */
typedef struct dravik_error {
    dravik_status status;
    char text[508]; /**< one line; cut at a character's end when it is longer */
} dravik_error;

/** @brief The library's version, such as "1.0.0". */
DRAVIK_API const char* dravik_version(void);

/** @name Images and settings
 * @{ */

/** @brief A grey image in the caller's memory, looked at during a call only. */
typedef struct dravik_image {
    const uint8_t* pixels; /**< the first pixel of the top row; 0 is black, 255 white */
    int32_t width;         /**< at least 1 */
    int32_t height;        /**< at least 1; 64 million pixels at most */
    ptrdiff_t
        stride; /**< bytes from a row to the one below; negative for images that begin with the bottom row */
} dravik_image;

/** @brief A part of an image in pixels; right and bottom are just outside. */
typedef struct dravik_box {
    int32_t left, top, right, bottom;
} dravik_box;

/** @brief How an image is looked at and read. What is not set is as the font's own settings say, which the
 * trainer keeps with it. Where settings are asked for, null stands for those of dravik_settings_new(). */
typedef struct dravik_settings dravik_settings;

/** @brief Settings that leave all to the font, with a limit of 0.2. Null for want of memory. */
DRAVIK_API dravik_settings* dravik_settings_new(void);
DRAVIK_API void dravik_settings_free(dravik_settings* settings);

/** @brief Looks for characters in this part of the image alone, whatever region the font has. A part of it
 * must lie in the image when it is read. Boxes are told in the whole image all the same. Null stands for the
 * whole image. */
DRAVIK_API dravik_status dravik_settings_set_region(dravik_settings* settings, const dravik_box* region,
                                                    dravik_error* error);

/** @brief The same for a region that stands at an angle. It is given as it stands before it is turned around
 * its middle: the upper left corner and the sides in pixels (4 to 65535), then the angle in degrees clockwise
 * (-360 to 360). Print in it is read upright; what lies beyond the image is as the image's border. */
DRAVIK_API dravik_status dravik_settings_set_turned_region(dravik_settings* settings, double left, double top,
                                                           double width, double height, double angle,
                                                           dravik_error* error);

/** @brief Print and its background. */
typedef enum dravik_polarity {
    DRAVIK_ANY_POLARITY = 0, /**< found out for each image */
    DRAVIK_DARK_ON_LIGHT = 1,
    DRAVIK_LIGHT_ON_DARK = 2
} dravik_polarity;
DRAVIK_API dravik_status dravik_settings_set_polarity(dravik_settings* settings, dravik_polarity polarity,
                                                      dravik_error* error);

/** @brief What characters are made of. */
typedef enum dravik_print {
    DRAVIK_ANY_PRINT = 0, /**< found out for each image */
    DRAVIK_SOLID = 1,
    DRAVIK_DOTS = 2
} dravik_print;
DRAVIK_API dravik_status dravik_settings_set_print(dravik_settings* settings, dravik_print print,
                                                   dravik_error* error);

/** @brief No capital or figure is lower than so many pixels, 0 to 2000; 0 for any height. */
DRAVIK_API dravik_status dravik_settings_set_smallest_height(dravik_settings* settings, int32_t pixels,
                                                             dravik_error* error);

/** @brief Characters that are read with less confidence stand as "?" in texts. 0 to 1, usually 0.2. */
DRAVIK_API dravik_status dravik_settings_set_reject_limit(dravik_settings* settings, double limit,
                                                          dravik_error* error);

/** @} */
/** @name Reading
 * @{ */

/** @brief A trained font, ready to read. */
typedef struct dravik_font dravik_font;

/** @brief Opens a font file (`NAME.nnd`). The file is not needed any more when the call returns. */
DRAVIK_API dravik_status dravik_font_open(const char* file, dravik_font** font, dravik_error* error);

/** @brief Opens a font by its name in a jobs folder, where the trainer keeps them. Null stands for the user's
 * jobs folder:
 * `$XDG_DATA_HOME/tamlux/Jobs`, on Windows `C:\Tamlux\Jobs`. */
DRAVIK_API dravik_status dravik_font_open_named(const char* jobs, const char* name, dravik_font** font,
                                                dravik_error* error);

DRAVIK_API void dravik_font_free(dravik_font* font);

/** @brief The characters that the font can read, one behind the other. */
DRAVIK_API const char* dravik_font_characters(const dravik_font* font);

/** @brief Another character that one may be. */
typedef struct dravik_alternative {
    const char* text;
    double confidence; /**< that this one is right, 0 to 1 */
} dravik_alternative;

/** @brief A character that was read. */
typedef struct dravik_character {
    const char* text;  /**< the font's best answer, also below the limit */
    double confidence; /**< probability that the answer is right, 0 to 1: of many characters with 0.9, nine in
                          ten are */
    dravik_box box;
    int32_t line; /**< from 0, from top to bottom */
    int32_t alternative_count;
    const dravik_alternative*
        alternatives; /**< the likeliest first, without the answer; null when there are none */
} dravik_character;

/** @brief What was read in an image. */
typedef struct dravik_reading dravik_reading;

/** @brief Reads an image. Nothing found is a reading without characters. */
DRAVIK_API dravik_status dravik_font_read(const dravik_font* font, const dravik_image* image,
                                          const dravik_settings* settings, dravik_reading** reading,
                                          dravik_error* error);

DRAVIK_API void dravik_reading_free(dravik_reading* reading);

/** @brief The text, with line feeds between lines and "?" for characters below the limit. */
DRAVIK_API const char* dravik_reading_text(const dravik_reading* reading);

/** @brief The characters in reading order, `*count` of them; null when there are none. `count` may not be
 * null. */
DRAVIK_API const dravik_character* dravik_reading_characters(const dravik_reading* reading, size_t* count);

/** @} */
/** @name Verifying
 * @{ */

/** @brief How a character of a reading stands to what was expected. */
typedef enum dravik_verdict {
    DRAVIK_RIGHT = 0,     /**< read as expected */
    DRAVIK_DOUBTFUL = 1,  /**< read as expected, with less confidence than the limit */
    DRAVIK_WRONG = 2,     /**< read as another character */
    DRAVIK_MISSING = 3,   /**< expected, and nothing was found */
    DRAVIK_UNEXPECTED = 4 /**< found, and nothing was expected */
} dravik_verdict;

/** @brief A character that was expected, read or both. */
typedef struct dravik_verified {
    dravik_verdict verdict;
    int32_t index;        /**< of the character in the reading, -1 for #DRAVIK_MISSING */
    const char* expected; /**< "" for #DRAVIK_UNEXPECTED */
    const char* read;     /**< "" for #DRAVIK_MISSING */
    double confidence;    /**< that the expected character is there, 0 to 1 */
} dravik_verified;

/** @brief A reading beside the text that was expected. */
typedef struct dravik_verification dravik_verification;

/** @brief Holds a reading against the text that should be there. Blanks and line breaks of the text do not
 * count. Characters are paired so that as few as possible are wrong, missing or unexpected. The reading may
 * go before the verification does. */
DRAVIK_API dravik_status dravik_reading_verify(const dravik_reading* reading, const char* expected,
                                               dravik_verification** verification, dravik_error* error);

DRAVIK_API void dravik_verification_free(dravik_verification* verification);

/** @brief 1 when every character is #DRAVIK_RIGHT, else 0. */
DRAVIK_API int dravik_verification_passed(const dravik_verification* verification);

/** @brief The characters in their order, `*count` of them; null when there are none. `count` may not be null.
 */
DRAVIK_API const dravik_verified* dravik_verification_characters(const dravik_verification* verification,
                                                                 size_t* count);

/** @} */
/** @name Teaching
 * @{ */

/** @brief A font that is being taught. Nothing reaches its file before dravik_learner_save(). */
typedef struct dravik_learner dravik_learner;

/** @brief Takes the font of that name in a jobs folder (null: the user's), and makes it when it is missing.
 */
DRAVIK_API dravik_status dravik_learner_open(const char* jobs, const char* name, dravik_learner** learner,
                                             dravik_error* error);

DRAVIK_API void dravik_learner_free(dravik_learner* learner);

/** @brief Includes the characters of an image as samples, labelled with the text in reading order; blanks and
 * line breaks do not count. Where another number of characters is found, the print is divided into those of
 * the text when that is nearly as likely. Characters that the font does not have yet are added to it.
 * `samples` may be null. With #DRAVIK_COUNT_MISMATCH nothing is included; the error says how many were found.
 */
DRAVIK_API dravik_status dravik_learner_include(dravik_learner* learner, const dravik_image* image,
                                                const dravik_settings* settings, const char* text,
                                                int32_t* samples, dravik_error* error);

/** @brief The font keeps what is set in `settings`, but for the limit, and goes by it wherever no others are
 * given: here, in dravik_font_read() and in the trainer. #DRAVIK_BAD_ARGUMENT for a region with a side below
 * 4 pixels. */
DRAVIK_API dravik_status dravik_learner_keep_settings(dravik_learner* learner,
                                                      const dravik_settings* settings, dravik_error* error);

/** @brief The figures of a training. */
typedef struct dravik_training {
    int32_t samples; /**< that the font holds */
    int32_t cycles;
    double rms_error;
    double seconds;
} dravik_training;

/** @brief Asked during a training, at least once; anything but 0 stops it. It must not call the learner. */
typedef int (*dravik_progress)(const dravik_training* so_far, void* user);

/** @brief Trains the font on all its samples. It takes `seconds` at most (1 to 86400), or a minute when that
 * is 0. `progress` and `training` may be null. */
DRAVIK_API dravik_status dravik_learner_train(dravik_learner* learner, int32_t seconds,
                                              dravik_progress progress, void* user, dravik_training* training,
                                              dravik_error* error);

/** @brief A check on samples that the checked network was not trained on. */
typedef struct dravik_check {
    int32_t checked;   /**< samples */
    int32_t wrong;     /**< of them, read as another character */
    int32_t unchecked; /**< characters of a single sample */
} dravik_check;

/** @brief Waits for the check that follows each training. #DRAVIK_NO_CHARACTERS when there are no two
 * characters of two samples. */
DRAVIK_API dravik_status dravik_learner_check(dravik_learner* learner, dravik_check* check,
                                              dravik_error* error);

/** @brief Writes the font to its file, which is the old one or the new one at any instant. */
DRAVIK_API dravik_status dravik_learner_save(dravik_learner* learner, dravik_error* error);

/** @} */

/* NOLINTEND(modernize-use-using) */
#ifdef __cplusplus
}
#endif

#endif
