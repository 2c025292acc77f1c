#include "actions/ZORHostViewActions.h"

#include "actions/ZORHostActionIndex.h"
#include "actions/ZORHostIcons.h"
#include "view/ZORHostView3D.h"

#include <QActionGroup>
#include <QCoreApplication>
#include <QMenu>
#include <QToolBar>

namespace {

struct StandardView
{
    ZORVisCamera::StandardView view;
    const char* name; // of object and icon
    const char* text;
};

constexpr StandardView kStandardViews[] = {
    {ZORVisCamera::Isometric, "Isometric", QT_TRANSLATE_NOOP("ZORHostViewActions", "&Isometric")},
    {ZORVisCamera::Front, "Front", QT_TRANSLATE_NOOP("ZORHostViewActions", "&Front")},
    {ZORVisCamera::Back, "Back", QT_TRANSLATE_NOOP("ZORHostViewActions", "&Back")},
    {ZORVisCamera::Left, "Left", QT_TRANSLATE_NOOP("ZORHostViewActions", "&Left")},
    {ZORVisCamera::Right, "Right", QT_TRANSLATE_NOOP("ZORHostViewActions", "&Right")},
    {ZORVisCamera::Top, "Top", QT_TRANSLATE_NOOP("ZORHostViewActions", "&Top")},
    {ZORVisCamera::Bottom, "Bottom", QT_TRANSLATE_NOOP("ZORHostViewActions", "B&ottom")},
};

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(ZORHostViewActions)
};

QAction* MakeAction(ZORHostView3D* view, const char* name, const QString& icon, const QString& text, int key)
{
    auto* action = new QAction(ZORHostIcon(icon), text, view);
    action->setObjectName(QStringLiteral("_%1Action").arg(QString::fromLatin1(name)));
    action->setShortcut(key);
    action->setShortcutContext(Qt::WidgetShortcut);
    action->setToolTip(QStringLiteral("%1 (%2)").arg(ZORHostPlainText(text),
                                                     action->shortcut().toString(QKeySequence::NativeText)));
    view->addAction(action);
    return action;
}

QAction* MakeModeAction(ZORHostView3D* view, ZORVisRenderer::DisplayMode mode, const char* name,
                        const QString& text, int key)
{
    QAction* action = MakeAction(view, name, QString::fromLatin1(name).toLower(), text, key);
    action->setCheckable(true);
    action->setChecked(mode == view->GetDisplayMode());
    QObject::connect(action, &QAction::triggered, view, [view, mode] { view->SetDisplayMode(mode); });
    QObject::connect(view, &ZORHostView3D::DisplayModeChanged, action,
                     [action, mode](ZORVisRenderer::DisplayMode now) { action->setChecked(now == mode); });
    return action;
}

} // namespace

void ZORHostAddViewActions(ZORHostView3D* view, QMenu* menu, QToolBar* toolBar)
{
    QAction* fit = MakeAction(view, "FitAll", "fit-all", Texts::tr("Fit &All"), Qt::Key_F);
    QObject::connect(fit, &QAction::triggered, view, &ZORHostView3D::FitAll);

    QList<QAction*> turns;
    for (const StandardView& entry : kStandardViews) {
        const QString icon = QStringLiteral("view-%1").arg(QString::fromLatin1(entry.name).toLower());
        QAction* action =
            MakeAction(view, entry.name, icon, Texts::tr(entry.text), Qt::Key_1 + int(turns.size()));
        QObject::connect(action, &QAction::triggered, view,
                         [view, side = entry.view] { view->SetStandardView(side); });
        turns.append(action);
    }

    auto* modes = new QActionGroup(view);
    modes->addAction(MakeModeAction(view, ZORVisRenderer::Shaded, "Shaded", Texts::tr("&Shaded"), Qt::Key_S));
    modes->addAction(
        MakeModeAction(view, ZORVisRenderer::Wireframe, "Wireframe", Texts::tr("&Wireframe"), Qt::Key_W));

    const QList<QList<QAction*>> groups = {{fit}, turns, modes->actions()};
    for (const QList<QAction*>& group : groups) {
        menu->addActions(group);
        toolBar->addActions(group);
        menu->addSeparator();
        toolBar->addSeparator();
    }
}
