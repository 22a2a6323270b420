/* The header is C, and its functions are found by a C program. */
#include <dravik/dravik.h>
#include <stdio.h>

int main(void) {
    dravik_font *font = NULL;
    dravik_error error = {DRAVIK_OK, ""};
    if (dravik_font_open("no such font.nnd", &font, &error) != DRAVIK_NOT_FOUND || font) return 1;
    printf("%s: %s\n", dravik_version(), error.text);
    return error.text[0] == '\0';
}
