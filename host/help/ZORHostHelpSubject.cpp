#include "help/ZORHostHelpSubject.h"

#include "actions/ZORHostActionIndex.h"
#include "base/ZORHostWindowTitle.h"

#include <ZORCommand/ZORCmdController.h>

#include <QAbstractButton>
#include <QAction>
#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QDockWidget>
#include <QKeySequence>
#include <QLabel>
#include <QWidget>

namespace {

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(ZORHostHelpSubject)
};

/// The topic that \a widget itself names; empty where it names none.
QString GetTopic(const QWidget* widget)
{
    const QString topic = widget->property("helpTopic").toString();
    if (!topic.isEmpty())
        return topic;
    if (const auto* dock = qobject_cast<const QDockWidget*>(widget))
        return dock->windowTitle();
    return widget->isWindow() ? ZORHostWindowTitle::GetKind(widget).remove(QLatin1String("[*]")) : QString();
}

/// Whether it is a window of this program, and not a box of Qt.
bool IsOwn(const QWidget* window)
{
    return qstrncmp(window->metaObject()->className(), "ZOR", 3) == 0;
}

const QAction* FindCommand(const QString& title)
{
    const auto* const controller = ZORCmdController::GetController();
    const QStringList categories = controller->GetCategories();
    for (const QString& category : categories) {
        const QList<QAction*> actions = controller->GetActions(category);
        for (const QAction* action : actions) {
            if (ZORHostPlainText(action->text()) == title)
                return action;
        }
    }
    return nullptr;
}

/// A text as it stands within Markdown.
QString Escape(QString text)
{
    for (const char c : {'\\', '*', '_', '`', '<', '|', '['})
        text.replace(QLatin1Char(c), QStringLiteral("\\") + QLatin1Char(c));
    return text.simplified();
}

QString GetLabel(const QWidget* field, const QWidget* window)
{
    if (const auto* button = qobject_cast<const QAbstractButton*>(field); button && !button->text().isEmpty())
        return ZORHostPlainText(button->text());
    const auto labels = window->findChildren<QLabel*>();
    for (const QLabel* label : labels) {
        if (label->buddy() == field)
            return ZORHostPlainText(label->text()).section(u':', 0, 0);
    }
    return field->accessibleName();
}

/// One line for each field that the user can see.
QString DescribeFields(const QWidget* window)
{
    QStringList lines;
    const auto fields = window->findChildren<QWidget*>();
    for (const QWidget* field : fields) {
        if (field->focusPolicy() == Qt::NoFocus || !field->isVisibleTo(window)
            || qobject_cast<const QDialogButtonBox*>(field->parentWidget()))
            continue;
        const QString label = GetLabel(field, window);
        if (label.isEmpty())
            continue;
        QString line = QStringLiteral("- **%1**").arg(Escape(label));
        if (!field->toolTip().isEmpty())
            line += QStringLiteral(": ") + Escape(field->toolTip());
        if (!lines.contains(line))
            lines.append(line);
    }
    return lines.join(u'\n');
}

QString DescribeWindow(const QWidget* window)
{
    const QString title = ZORHostWindowTitle::GetKind(window);
    QString text = QStringLiteral("# %1\n\n").arg(Escape(title));
    if (const QAction* command = FindCommand(title))
        text += Escape(command->toolTip()) + QStringLiteral(".\n\n");
    const QString fields = DescribeFields(window);
    if (!fields.isEmpty())
        text += QStringLiteral("## %1\n\n%2\n").arg(Texts::tr("Fields"), fields);
    return text;
}

} // namespace

ZORHostHelpSubject ZORHostHelpSubject::Find(const QWidget* widget)
{
    for (; widget; widget = widget->parentWidget()) {
        const ZORHostHelpPlace place = ZORHostHelpPages::Find(GetTopic(widget));
        if (!place.IsNull())
            return {place, {}};
        if (widget->isWindow() && IsOwn(widget) && !widget->windowTitle().isEmpty())
            return {{}, DescribeWindow(widget)};
    }
    return {};
}

QString ZORHostHelpSubject::DescribeAction(const QAction* action)
{
    if (!action)
        return {};
    const QString title = ZORHostPlainText(action->text());
    QString text = QStringLiteral("# %1\n\n").arg(Escape(title));
    const QString section = ZORHostHelpPages::ReadSection(ZORHostHelpPages::Find(title));
    text += section.trimmed().isEmpty() ? Escape(action->statusTip()) + u'\n' : section;
    const QString keys = action->shortcut().toString(QKeySequence::NativeText);
    if (!keys.isEmpty())
        text += u'\n' + Texts::tr("Keys: %1").arg(keys) + u'\n';
    return text;
}
