// The pages of the help.

#pragma once

#include <QList>
#include <QString>
#include <QStringList>

/// A heading of a page.
struct ZORHostHelpPlace
{
    QString page; // file name of the resource
    QString slug; // of the heading, see ZORHostHelpPages::MakeSlug(); empty: the top of the page
    bool IsNull() const { return page.isEmpty(); }
    bool operator==(const ZORHostHelpPlace&) const = default;
};

/// A heading as contents show it.
struct ZORHostHelpHeading
{
    int level = 1;
    QString text;
    QString body; // what follows it, up to the next heading
};

/// Markdown pages that come with the program, so that they need no network: those of the host in the resource folder
/// ":/host/help", then those that plug-ins add to ":/zorsdk/help". A topic is a heading: the help on a dialog is
/// what stands below a heading that reads like its title.
namespace ZORHostHelpPages {

/// File names of the pages, those of the host first.
QStringList GetPages();
/// The first heading.
QString GetTitle(const QString& page);
/// Returns the page without pictures, which the resources do not include; empty if there is none.
QString Read(const QString& page);
QList<ZORHostHelpHeading> GetHeadings(const QString& page);

/// What links call a heading: "Mouse and keys" gives "mouse-and-keys".
QString MakeSlug(const QString& heading);
/// The first heading that reads like \a topic, whatever its case and marks; null where there is none.
ZORHostHelpPlace Find(const QString& topic);
/// Where a link of \a page leads: "#slug", "page.md" or "page.md#slug". Null where that page does not come along.
ZORHostHelpPlace Resolve(const QString& page, const QString& link);
/// The text below a heading with its subheadings; empty where there is none.
QString ReadSection(const ZORHostHelpPlace& place);

} // namespace ZORHostHelpPages
