#include "help/ZORHostHelpPages.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

namespace {

constexpr const char* kFolders[] = {":/host/help", ":/zorsdk/help"};
const QLatin1String kFence("```");

/// The level of the heading in this line; 0: none.
int GetLevel(const QString& line)
{
    int level = 0;
    while (level < line.size() && line[level] == u'#')
        ++level;
    return level < line.size() && line[level] == u' ' ? level : 0;
}

} // namespace

QStringList ZORHostHelpPages::GetPages()
{
    QStringList pages;
    for (const char* folder : kFolders) {
        const QFileInfoList files =
            QDir(QLatin1String(folder)).entryInfoList({"*.md"}, QDir::Files, QDir::Name);
        for (const QFileInfo& file : files)
            pages.append(file.filePath());
    }
    return pages;
}

QString ZORHostHelpPages::Read(const QString& page)
{
    QFile file(page);
    if (page.isEmpty() || !file.open(QIODevice::ReadOnly))
        return {};
    static const QRegularExpression picture(QStringLiteral("!\\[[^\\]]*\\]\\([^)]*\\)"));
    return QString::fromUtf8(file.readAll()).remove(picture);
}

QList<ZORHostHelpHeading> ZORHostHelpPages::GetHeadings(const QString& page)
{
    QList<ZORHostHelpHeading> headings;
    bool isCode = false;
    const QStringList lines = Read(page).split(u'\n');
    for (const QString& line : lines) {
        if (line.startsWith(kFence))
            isCode = !isCode;
        const int level = isCode ? 0 : GetLevel(line);
        if (level > 0)
            headings.append({level, line.mid(level + 1).trimmed().remove(u'`'), {}});
        else if (!headings.isEmpty())
            headings.last().body += line + u'\n';
    }
    return headings;
}

QString ZORHostHelpPages::GetTitle(const QString& page)
{
    const QList<ZORHostHelpHeading> headings = GetHeadings(page);
    return headings.isEmpty() ? QFileInfo(page).completeBaseName() : headings.constFirst().text;
}

QString ZORHostHelpPages::MakeSlug(const QString& heading)
{
    QString slug;
    const QString trimmed = heading.trimmed();
    for (const QChar c : trimmed) {
        if (c.isLetterOrNumber())
            slug += c.toLower();
        else if ((c.isSpace() || c == u'-') && !slug.endsWith(u'-'))
            slug += u'-';
    }
    return slug.endsWith(u'-') ? slug.chopped(1) : slug;
}

ZORHostHelpPlace ZORHostHelpPages::Find(const QString& topic)
{
    const QString slug = MakeSlug(topic);
    if (slug.isEmpty())
        return {};
    const QStringList pages = GetPages();
    for (const QString& page : pages) {
        const QList<ZORHostHelpHeading> headings = GetHeadings(page);
        for (const ZORHostHelpHeading& heading : headings) {
            if (MakeSlug(heading.text) == slug)
                return {page, slug};
        }
    }
    return {};
}

ZORHostHelpPlace ZORHostHelpPages::Resolve(const QString& page, const QString& link)
{
    static const QRegularExpression number(QStringLiteral("^\\d+-")); // by which pages are in order
    const QString file = link.section(u'#', 0, 0);
    const QString slug = link.section(u'#', 1);
    if (file.isEmpty())
        return {page, slug};
    const QStringList pages = GetPages();
    for (const QString& candidate : pages) {
        if (QFileInfo(candidate).fileName().remove(number) == QFileInfo(file).fileName())
            return {candidate, slug};
    }
    return {};
}

QString ZORHostHelpPages::ReadSection(const ZORHostHelpPlace& place)
{
    QString text;
    int level = 0;
    const QList<ZORHostHelpHeading> headings = GetHeadings(place.page);
    for (const ZORHostHelpHeading& heading : headings) {
        if (level == 0 && MakeSlug(heading.text) == place.slug)
            level = heading.level;
        else if (level > 0 && heading.level > level)
            text += QString(heading.level, u'#') + u' ' + heading.text + u'\n';
        else if (level > 0)
            break;
        if (level > 0)
            text += heading.body;
    }
    return text;
}
