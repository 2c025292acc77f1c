#include "ZORNestDxfText_p.h"

#include <algorithm>
#include <cmath>

namespace ZORNestDxfText {

QColor GetIndexedColor(int index)
{
    static constexpr QRgb kFirst[] = {0xff0000, 0xffff00, 0x00ff00, 0x00ffff, 0x0000ff,
                                      0xff00ff, 0xffffff, 0x808080, 0xc0c0c0};
    static constexpr int kValues[] = {255, 165, 127, 76, 38};
    static constexpr int kGrays[] = {51, 91, 132, 173, 214, 255};
    if (index < 1 || index > 255)
        return {};
    if (index < 10)
        return QColor(kFirst[index - 1]);
    if (index >= 250)
        return QColor(kGrays[index - 250], kGrays[index - 250], kGrays[index - 250]);
    const int value = kValues[index % 10 / 2];
    const int lowest = index % 2 == 1 ? value / 2 : 0;
    const int step = index / 10 - 1; // of 24 hues
    const double hue = step * 15 / 60.0;
    const auto component = [&](double shift) {
        const double place = std::fmod(hue + shift, 6.0);
        const double share = std::clamp(std::abs(place - 3) - 1, 0.0, 1.0);
        return lowest + int((value - lowest) * share);
    };
    return QColor(component(0), component(4), component(2));
}

QString GetPlainText(const QString& text)
{
    QString plain;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] != u'%' || i + 2 >= text.size() || text[i + 1] != u'%') {
            plain += text[i];
            continue;
        }
        const QChar code = text[i + 2].toLower();
        i += 2;
        if (code == u'd')
            plain += QChar(0x00b0);
        else if (code == u'p')
            plain += QChar(0x00b1);
        else if (code == u'c')
            plain += QChar(0x2300);
        else if (code == u'%')
            plain += u'%';
        else if (code != u'u' && code != u'o' && code != u'k') // switches of the line under or over the text
            plain += QStringView(text).mid(i - 2, 3);
    }
    return plain;
}

QString GetPlainParagraphs(const QString& text)
{
    QString plain;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar character = text[i];
        if (character == u'{' || character == u'}')
            continue;
        if (character != u'\\' || i + 1 == text.size()) {
            plain += character;
            continue;
        }
        const QChar code = text[++i];
        if (code == u'P' || code == u'X' || code == u'N') {
            plain += u'\n';
        } else if (code == u'~') {
            plain += QChar(0x00a0);
        } else if (code == u'\\' || code == u'{' || code == u'}') {
            plain += code;
        } else if (code == u'S') { // a stack: "1^2;", "1/2;", "1#2;"
            for (++i; i < text.size() && text[i] != u';'; ++i)
                plain += text[i] == u'^' || text[i] == u'#' ? QChar(u'/') : text[i];
        } else if (QStringView(u"LlOoKk").contains(code)) {
            continue;
        } else { // with an argument up to a semicolon
            const qsizetype end = text.indexOf(u';', i);
            i = end < 0 ? text.size() : end;
        }
    }
    return GetPlainText(plain);
}

} // namespace ZORNestDxfText
