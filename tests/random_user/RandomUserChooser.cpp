#include "RandomUserChooser.h"

#include "RandomUserAddress.h"
#include "RandomUserFiles.h"
#include "actions/ZORHostActionIndex.h"
#include "base/ZORHostWindowTitle.h"
#include "view/ZORHostView3D.h"
#include "window/ZORHostMainWindow.h"

#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatEnvironment.h>
#include <ZORFeature/ZORFeatEnvironmentManager.h>

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QFileDialog>
#include <QGroupBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QListWidget>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QScrollBar>
#include <QTabBar>
#include <QTextEdit>

#include <algorithm>

namespace {

/// Beyond these numbers the user tidies up, so that memory and time stay bounded in long runs.
constexpr int kMostGeometries = 120;
constexpr int kMostWindows = 12;
constexpr int kLongestPause = 150; // milliseconds

const char* const kKeys[] = {"Ctrl+N",
                             "Ctrl+O",
                             "Ctrl+S",
                             "Ctrl+Shift+S",
                             "Ctrl+Q",
                             "Ctrl+Shift+P",
                             "Ctrl+Z",
                             "Ctrl+Y",
                             "Ctrl+A",
                             "Ctrl+C",
                             "Ctrl+V",
                             "Ctrl+X",
                             "Delete",
                             "Backspace",
                             "Return",
                             "Escape",
                             "Tab",
                             "Shift+Tab",
                             "Up",
                             "Down",
                             "Left",
                             "Right",
                             "Home",
                             "End",
                             "PgUp",
                             "PgDown",
                             "F",
                             "1",
                             "4",
                             "7",
                             "S",
                             "W",
                             "F2",
                             "F10",
                             "Space",
                             "Shift+Down",
                             "Alt+F",
                             "Alt+V",
                             "Alt+H",
                             "Menu",
                             "+",
                             "*",
                             "Ctrl+Shift+E",
                             "Alt+Down"};

const QStringList& GetTexts()
{
    static const QStringList texts = {QString(),
                                      QStringLiteral("0"),
                                      QStringLiteral("1"),
                                      QStringLiteral("-1"),
                                      QStringLiteral("7"),
                                      QStringLiteral("12.5"),
                                      QStringLiteral("12,5"),
                                      QStringLiteral("1e9"),
                                      QStringLiteral("1e-310"),
                                      QStringLiteral("nan"),
                                      QStringLiteral("inf"),
                                      QStringLiteral("abc"),
                                      QStringLiteral("99999999999"),
                                      QStringLiteral("a b.c"),
                                      QStringLiteral("%1 %n &x <b>"),
                                      QStringLiteral("\u00e4\u6f22\u202e"),
                                      QString(300, u'x')};
    return texts;
}

template<class... Types>
bool IsA(const QWidget* widget)
{
    return (qobject_cast<const Types*>(widget) || ...);
}

/// Names of the files that are as they should be.
const QRegularExpression& GetGoodNames()
{
    static const QRegularExpression pattern(
        QStringLiteral("^(part-|tetra|wing|document|saved|contours|layup|ribs|patches|out)"));
    return pattern;
}

/// The names that one of the name filters of a file dialog shows.
QStringList GetFitting(const QStringList& names, const QStringList& filters)
{
    static const QRegularExpression pattern(QStringLiteral("\\*\\.\\w+"));
    if (filters.isEmpty() || filters.contains(QLatin1String("All Files (*)")))
        return names.filter(
            QRegularExpression(QStringLiteral("\\.(msi|dxf|svg)$"))); // nesting and translation
    QStringList patterns;
    for (auto match = pattern.globalMatch(filters.join(u' ')); match.hasNext();)
        patterns.append(match.next().captured());
    QStringList fitting;
    std::copy_if(names.cbegin(), names.cend(), std::back_inserter(fitting),
                 [&patterns](const QString& name) { return QDir::match(patterns, name); });
    return fitting;
}

bool IsWorthUsing(const QWidget* widget)
{
    return IsA<QAbstractButton, QLineEdit, QAbstractSpinBox, QComboBox, QAbstractItemView, QTabBar, QTextEdit,
               QPlainTextEdit, QScrollBar, QGroupBox, QMenuBar, ZORHostView3D>(widget);
}

} // namespace

RandomUserChooser::RandomUserChooser(const RandomUserFiles* files, unsigned seed)
    : m_files(files)
    , m_random(seed)
{
}

int RandomUserChooser::Below(int count)
{
    return int(m_random() % unsigned(std::max(1, count)));
}

QString RandomUserChooser::AnyButton()
{
    const Qt::MouseButton button = OneIn(5) ? Qt::RightButton : OneIn(12) ? Qt::MiddleButton : Qt::LeftButton;
    return QString::number(int(button));
}

QString RandomUserChooser::AnyModifiers()
{
    const Qt::KeyboardModifier modifiers[] = {Qt::ShiftModifier, Qt::ControlModifier, Qt::AltModifier};
    return QString::number(OneIn(6) ? int(modifiers[Below(3)]) : 0);
}

QString RandomUserChooser::AnyText()
{
    return AnyOf(GetTexts());
}

RandomUserAction RandomUserChooser::Next()
{
    const QWidgetList windows = RandomUserAddress::GetReachableWindows();
    if (windows.isEmpty())
        return {"wait", {"10"}};
    if (windows.size() > 1) {
        const RandomUserAction tidying = TidyUp(windows);
        if (!tidying.kind.isEmpty())
            return tidying;
    }
    // A person stays in a window for a while.
    QWidget* window = OneIn(4) ? nullptr : RandomUserAddress::FindWindow(m_window);
    if (!window)
        window = AnyOf(windows);
    m_window = RandomUserAddress::Of(window);
    if (qobject_cast<QMenu*>(window))
        return ChooseInMenu(window);
    if (qobject_cast<QFileDialog*>(window))
        return ChooseInFileDialog(window);
    return ChooseInWindow(window);
}

RandomUserAction RandomUserChooser::TidyUp(const QWidgetList& windows)
{
    const ZORFeatEnvironment* environment = ZORFeatEnvironmentManager::GetManager()->GetCurrentEnvironment();
    const int numGeometries = environment ? environment->GetContainer()->GetNumGeometry() : 0;
    const auto main = std::find_if(windows.cbegin(), windows.cend(), &IsA<ZORHostMainWindow>);
    if (numGeometries > kMostGeometries && main != windows.cend())
        return {"menu", {RandomUserAddress::Of(*main), ZORHostWindowTitle::GetKind(*main) + " > File > New"}};
    if (windows.size() > kMostWindows) {
        const QWidget* window = windows[1 + Below(int(windows.size()) - 1)];
        if (window != *main)
            return {"close", {RandomUserAddress::Of(window)}};
    }
    return {};
}

RandomUserAction RandomUserChooser::ChooseInMenu(const QWidget* menu)
{
    if (OneIn(5))
        return {"press", {"Escape"}};
    return {"entry", {RandomUserAddress::Of(menu), QString::number(Below(int(menu->actions().size())))}};
}

RandomUserAction RandomUserChooser::ChooseInFileDialog(const QWidget* window)
{
    // Nothing else is touched in here: files outside of the folder are in reach of these dialogs.
    const auto* dialog = qobject_cast<const QFileDialog*>(window);
    if (OneIn(4))
        return {"press", {"Escape"}};
    QStringList names = m_files->GetNamesToRead();
    if (dialog->acceptMode() == QFileDialog::AcceptSave)
        names = RandomUserFiles::GetNamesToWrite();
    else if (dialog->fileMode() == QFileDialog::Directory)
        names = RandomUserFiles::GetFolderNames();
    // Mostly what can be read, so that there is something to work with.
    if (const QStringList fitting = GetFitting(names, dialog->nameFilters()); !fitting.isEmpty() && !OneIn(4))
        names = fitting;
    if (const QStringList good = names.filter(GetGoodNames()); !good.isEmpty() && !OneIn(3))
        names = good;
    return {"file", {RandomUserAddress::Of(window), AnyOf(names)}};
}

RandomUserAction RandomUserChooser::ChooseInWindow(QWidget* window)
{
    const int dice = Below(100);
    if (dice < 12)
        return ChooseForWindow(window);
    if (dice < 20)
        return ChooseKeys();
    const bool hasMenus = !ZORHostCollectActions(window).isEmpty();
    if (hasMenus && dice < 50)
        return ChooseFromMenus(window);
    QWidgetList widgets = RandomUserAddress::GetReachableWidgets(window);
    widgets.removeIf([](const QWidget* widget) { return !IsWorthUsing(widget); });
    if (widgets.isEmpty())
        return {"press", {"Escape"}};
    // Tables, lists and the 3D view have more to offer than a button.
    QWidgetList rich = widgets;
    rich.removeIf([](const QWidget* widget) { return !IsA<QAbstractItemView, ZORHostView3D>(widget); });
    return ChooseForWidget(window, !rich.isEmpty() && OneIn(4) ? AnyOf(rich) : AnyOf(widgets));
}

RandomUserAction RandomUserChooser::ChooseForWindow(const QWidget* window)
{
    const QString address = RandomUserAddress::Of(window);
    switch (Below(4)) {
    case 0:
        return {"resize", {address, QString::number(1 + Below(1400)), QString::number(1 + Below(900))}};
    case 1:
        // The main window ends the session, which is to be long enough for something to happen.
        if (!qobject_cast<const ZORHostMainWindow*>(window) || OneIn(6))
            return {"close", {address}};
        break;
    default:
        break;
    }
    return {"wait", {QString::number(Below(kLongestPause))}};
}

RandomUserAction RandomUserChooser::ChooseKeys()
{
    if (OneIn(4))
        return {"type", {AnyText()}};
    const QString keys = QLatin1String(kKeys[Below(int(std::size(kKeys)))]);
    return {"press", {keys == "Ctrl+Q" && !OneIn(4) ? QStringLiteral("Return") : keys}};
}

RandomUserAction RandomUserChooser::ChooseFromMenus(const QWidget* window)
{
    const QList<ZORHostActionEntry> entries = ZORHostCollectActions(window);
    ZORHostActionEntry entry = AnyOf(entries);
    if (OneIn(4)) { // these windows are worth more than one visit in a hundred
        QList<ZORHostActionEntry> jobs = entries;
        jobs.removeIf([](const ZORHostActionEntry& other) { return !other.path.endsWith("Nesting"); });
        entry = jobs.isEmpty() ? entry : AnyOf(jobs);
    }
    if (entry.text == "Quit" && !OneIn(4))
        return ChooseKeys();
    return {"menu", {RandomUserAddress::Of(window), entry.path + " > " + entry.text}};
}

RandomUserAction RandomUserChooser::ChooseForWidget(const QWidget* window, QWidget* widget)
{
    const QStringList address = {RandomUserAddress::Of(window), RandomUserAddress::Of(window, widget)};
    if (OneIn(10))
        return ClickAnywhere(address);
    if (OneIn(15))
        return {"wheel",
                address + QStringList{AnyPlace(), AnyPlace(), QString::number(120 * (Below(7) - 3))}};
    if (qobject_cast<const ZORHostView3D*>(widget))
        return ChooseInView(address);
    if (const auto* combo = qobject_cast<const QComboBox*>(widget))
        return {"choose", address + QStringList{QString::number(Below(combo->count()))}};
    if (const auto* bar = qobject_cast<const QTabBar*>(widget))
        return {"tab", address + QStringList{QString::number(Below(bar->count()))}};
    if (IsA<QLineEdit, QAbstractSpinBox, QTextEdit, QPlainTextEdit>(widget))
        return {"enter", address + QStringList{AnyText()}};
    if (const auto* view = qobject_cast<const QAbstractItemView*>(widget);
        view && view->model() && view->model()->rowCount() > 0 && !IsA<QHeaderView>(view))
        return ChooseCell(address, view);
    if (qobject_cast<const QAbstractButton*>(widget))
        return {"click", address + QStringList{"500", "500", QString::number(Qt::LeftButton), "0", "1"}};
    return ClickAnywhere(address);
}

RandomUserAction RandomUserChooser::ClickAnywhere(const QStringList& address)
{
    const QString count = QString::number(OneIn(4) ? 2 : 1);
    return {"click", address + QStringList{AnyPlace(), AnyPlace(), AnyButton(), AnyModifiers(), count}};
}

RandomUserAction RandomUserChooser::ChooseCell(const QStringList& address, const QWidget* widget)
{
    const QAbstractItemModel* model = qobject_cast<const QAbstractItemView*>(widget)->model();
    const QString row = QString::number(Below(model->rowCount()));
    const QString column = QString::number(Below(model->columnCount()));
    const QString count = QString::number(OneIn(3) ? 2 : 1);
    return {"cell", address + QStringList{row, column, AnyButton(), AnyModifiers(), count}};
}

RandomUserAction RandomUserChooser::ChooseInView(const QStringList& address)
{
    if (OneIn(3))
        return {"wheel",
                address + QStringList{AnyPlace(), AnyPlace(), QString::number(120 * (Below(9) - 4))}};
    if (OneIn(3))
        return ClickAnywhere(address);
    return {"drag",
            address
                + QStringList{AnyPlace(), AnyPlace(), AnyPlace(), AnyPlace(), AnyButton(), AnyModifiers()}};
}
