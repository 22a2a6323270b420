/* Reads every PNG image of a folder: read-folder FONT.nnd FOLDER
   cc read-folder.c $(pkg-config --cflags --libs dravik libpng) -o read-folder */
#include <dirent.h>
#include <dravik/dravik.h>
#include <png.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

static int read_file(const dravik_font *font, const char *file) {
    png_image png = {.version = PNG_IMAGE_VERSION};
    if (!png_image_begin_read_from_file(&png, file)) return fprintf(stderr, "%s: %s\n", file, png.message), 1;
    png.format = PNG_FORMAT_GRAY;
    uint8_t *pixels = malloc(PNG_IMAGE_SIZE(png));
    dravik_reading *reading = NULL;
    dravik_error error = {DRAVIK_NO_MEMORY, "Out of memory"};
    if (pixels && png_image_finish_read(&png, NULL, pixels, 0, NULL)) {
        const dravik_image image = {pixels, (int32_t)png.width, (int32_t)png.height, (ptrdiff_t)png.width};
        dravik_font_read(font, &image, NULL, &reading, &error);
    }
    if (reading) printf("%s\t%s\n", file, dravik_reading_text(reading));
    else fprintf(stderr, "%s: %s\n", file, error.text);
    const int failed = !reading;
    dravik_reading_free(reading);
    free(pixels);
    return failed;
}

int main(int argc, char **argv) {
    dravik_font *font = NULL;
    dravik_error error;
    if (argc != 3) return fputs("usage: read-folder FONT.nnd FOLDER\n", stderr), 2;
    if (dravik_font_open(argv[1], &font, &error)) return fprintf(stderr, "%s\n", error.text), 1;
    struct dirent **entries;
    const int count = scandir(argv[2], &entries, NULL, alphasort);
    int failed = count < 0;
    for (int i = 0; i < count; ++i) {
        char file[4096];
        const size_t length = strlen(entries[i]->d_name);
        snprintf(file, sizeof file, "%s/%s", argv[2], entries[i]->d_name);
        if (length > 4 && !strcmp(entries[i]->d_name + length - 4, ".png")) failed |= read_file(font, file);
        free(entries[i]);
    }
    if (count >= 0) free(entries);
    dravik_font_free(font);
    return failed;
}
