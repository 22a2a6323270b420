// Texts between the models (UTF-8) and Qt (UTF-16).
#pragma once

#include <QString>
#include <string>

namespace dravik::qt {

inline QString qtText(const std::string& text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}
inline std::string utf8(const QString& text) {
    return text.toStdString();
}

// UTF-16 position of the character with the given index; the end when there are fewer characters.
inline qsizetype positionOfCharacter(const QString& text, int index) {
    qsizetype position = 0;
    for (; index > 0 && position < text.size(); --index)
        position += text.at(position).isHighSurrogate() && position + 1 < text.size() ? 2 : 1;
    return position;
}

}  // namespace dravik::qt
