#include "actions/ZORHostViewActions.h"

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
    const char* tip;
};

constexpr StandardView kStandardViews[] = {
    {ZORVisCamera::Isometric, "Isometric", QT_TRANSLATE_NOOP("ZORHostViewActions", "&Isometric"),
     QT_TRANSLATE_NOOP("ZORHostViewActions", "Looks from the front, the left and above, and fits all")},
    {ZORVisCamera::Front, "Front", QT_TRANSLATE_NOOP("ZORHostViewActions", "&Front"),
     QT_TRANSLATE_NOOP("ZORHostViewActions", "Looks from the front and fits all")},
    {ZORVisCamera::Back, "Back", QT_TRANSLATE_NOOP("ZORHostViewActions", "&Back"),
     QT_TRANSLATE_NOOP("ZORHostViewActions", "Looks from the back and fits all")},
    {ZORVisCamera::Left, "Left", QT_TRANSLATE_NOOP("ZORHostViewActions", "&Left"),
     QT_TRANSLATE_NOOP("ZORHostViewActions", "Looks from the left and fits all")},
    {ZORVisCamera::Right, "Right", QT_TRANSLATE_NOOP("ZORHostViewActions", "&Right"),
     QT_TRANSLATE_NOOP("ZORHostViewActions", "Looks from the right and fits all")},
    {ZORVisCamera::Top, "Top", QT_TRANSLATE_NOOP("ZORHostViewActions", "&Top"),
     QT_TRANSLATE_NOOP("ZORHostViewActions", "Looks from above and fits all")},
    {ZORVisCamera::Bottom, "Bottom", QT_TRANSLATE_NOOP("ZORHostViewActions", "B&ottom"),
     QT_TRANSLATE_NOOP("ZORHostViewActions", "Looks from below and fits all")},
};

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(ZORHostViewActions)
};

QAction* MakeAction(ZORHostView3D* view, const char* name, const QString& icon, const QString& text,
                    const QString& tip, int key)
{
    auto* action = new QAction(ZORHostIcon(icon), text, view);
    action->setObjectName(QStringLiteral("_%1Action").arg(QString::fromLatin1(name)));
    action->setShortcut(key);
    // In the whole window: fields in which one types take the keys before.
    action->setShortcutContext(Qt::WindowShortcut);
    action->setToolTip(
        QStringLiteral("%1 (%2)").arg(tip, action->shortcut().toString(QKeySequence::NativeText)));
    action->setStatusTip(tip);
    view->addAction(action);
    return action;
}

QAction* MakeModeAction(ZORHostView3D* view, ZORVisRenderer::DisplayMode mode, const char* name,
                        const QString& text, const QString& tip, int key)
{
    QAction* action = MakeAction(view, name, QString::fromLatin1(name).toLower(), text, tip, key);
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
    QAction* fit = MakeAction(view, "FitAll", "fit-all", Texts::tr("Fit &All"),
                              Texts::tr("Zooms so that everything is in view"), Qt::Key_F);
    QObject::connect(fit, &QAction::triggered, view, &ZORHostView3D::FitAll);

    QList<QAction*> turns;
    for (const StandardView& entry : kStandardViews) {
        const QString icon = QStringLiteral("view-%1").arg(QString::fromLatin1(entry.name).toLower());
        QAction* action = MakeAction(view, entry.name, icon, Texts::tr(entry.text), Texts::tr(entry.tip),
                                     Qt::Key_1 + int(turns.size()));
        QObject::connect(action, &QAction::triggered, view,
                         [view, side = entry.view] { view->SetStandardView(side); });
        turns.append(action);
    }

    auto* modes = new QActionGroup(view);
    modes->addAction(MakeModeAction(view, ZORVisRenderer::Shaded, "Shaded", Texts::tr("&Shaded"),
                                    Texts::tr("Draws surfaces filled and lit"), Qt::Key_S));
    modes->addAction(MakeModeAction(view, ZORVisRenderer::Wireframe, "Wireframe", Texts::tr("&Wireframe"),
                                    Texts::tr("Draws the edges of the triangles alone"), Qt::Key_W));

    const QList<QList<QAction*>> groups = {{fit}, turns, modes->actions()};
    for (const QList<QAction*>& group : groups) {
        menu->addActions(group);
        toolBar->addActions(group);
        menu->addSeparator();
        toolBar->addSeparator();
    }
}
