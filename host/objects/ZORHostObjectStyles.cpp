#include "objects/ZORHostObjectStyles.h"

#include "objects/ZORHostObjectSet.h"
#include "view/ZORHostSelection.h"

#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatStyles.h>

#include <QAction>
#include <QActionGroup>
#include <QColorDialog>
#include <QMenu>

#include <algorithm>
#include <array>
#include <cmath>

namespace {

constexpr std::array kOpacityPercents = {100, 75, 50, 25, 10};

QAction* MakeAction(QObject* parent, const char* name, const QString& text, const QString& tip,
                    const QKeySequence& key = {})
{
    auto* const action = new QAction(text, parent);
    action->setObjectName(QLatin1String(name));
    action->setStatusTip(tip);
    action->setToolTip(tip);
    action->setShortcut(key);
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    return action;
}

bool AnyVisible(const ZORFeatStyles& styles, const QList<ZORGeoGeometry*>& objects)
{
    return std::any_of(objects.begin(), objects.end(),
                       [&styles](const ZORGeoGeometry* object) { return styles.Get(object).IsVisible(); });
}

} // namespace

ZORHostObjectStyles::ZORHostObjectStyles(ZORHostSelection* selection, QWidget* window)
    : QObject(window)
    , m_selection(selection)
    , m_window(window)
    , m_showHide(MakeAction(this, "_ShowHideAction", tr("&Hide"), tr("Hides or shows the selected objects"),
                            Qt::CTRL | Qt::Key_H))
    , m_isolate(MakeAction(this, "_IsolateAction", tr("&Isolate"),
                           tr("Hides everything but the selected objects"), Qt::CTRL | Qt::Key_I))
    , m_showAll(MakeAction(this, "_ShowAllAction", tr("Show A&ll"), tr("Shows every object of the document"),
                           Qt::CTRL | Qt::SHIFT | Qt::Key_H))
    , m_color(
          MakeAction(this, "_ColorAction", tr("&Color..."), tr("Changes the color of the selected objects")))
    , m_usual(MakeAction(this, "_UsualStyleAction", tr("&Usual Style"),
                         tr("Gives the selected objects the style that their kind usually has")))
    , m_opacity(new QMenu(tr("&Opacity"), window))
    , m_display(new QMenu(tr("Display &As"), window))
    , m_opacities(new QActionGroup(this))
    , m_displays(new QActionGroup(this))
{
    connect(m_showHide, &QAction::triggered, this, &ZORHostObjectStyles::OnShowHideTriggered);
    connect(m_isolate, &QAction::triggered, this, &ZORHostObjectStyles::OnIsolateTriggered);
    connect(m_showAll, &QAction::triggered, this, &ZORHostObjectStyles::OnShowAllTriggered);
    connect(m_color, &QAction::triggered, this, &ZORHostObjectStyles::OnColorTriggered);
    connect(m_usual, &QAction::triggered, this, [this] {
        if (ZORFeatStyles* styles = GetStyles())
            styles->Reset(GetDrawn());
    });
    CreateOpacityMenu();
    CreateDisplayMenu();
}

void ZORHostObjectStyles::CreateOpacityMenu()
{
    m_opacity->setObjectName("_OpacityMenu");
    m_opacity->menuAction()->setStatusTip(tr("Makes the selected objects transparent"));
    for (const int percent : kOpacityPercents) {
        // 100 begins with the same digit.
        const QString text = percent == 10 ? tr("1&0%") : tr("&%1%").arg(percent);
        QAction* action = m_opacities->addAction(text);
        action->setObjectName(QStringLiteral("_Opacity%1Action").arg(percent));
        action->setStatusTip(tr("Draws the selected objects with an opacity of %1%").arg(percent));
        action->setToolTip(action->statusTip());
        action->setCheckable(true);
        action->setData(percent);
        connect(action, &QAction::triggered, this, [this, percent] {
            Change([percent](ZORFeatStyle& style) { style.SetOpacity(percent / 100.0); });
        });
    }
    m_opacity->addActions(m_opacities->actions());
}

void ZORHostObjectStyles::CreateDisplayMenu()
{
    m_display->setObjectName("_DisplayMenu");
    m_display->menuAction()->setStatusTip(tr("Changes how surfaces of the selected objects are drawn"));
    const std::tuple<ZORFeatStyle::Display, const char*, QString> choices[] = {
        {ZORFeatStyle::Display::Shaded, "Shaded", tr("&Shaded")},
        {ZORFeatStyle::Display::Wireframe, "Wireframe", tr("&Wireframe")},
        {ZORFeatStyle::Display::WithEdges, "WithEdges", tr("Shaded with &Edges")}};
    for (const auto& [display, name, text] : choices) {
        QAction* action = m_displays->addAction(text);
        action->setObjectName(QStringLiteral("_Display%1Action").arg(QLatin1String(name)));
        action->setStatusTip(m_display->menuAction()->statusTip());
        action->setToolTip(action->statusTip());
        action->setCheckable(true);
        action->setData(int(display));
        connect(action, &QAction::triggered, this, [this, chosen = display] {
            Change([chosen](ZORFeatStyle& style) { style.SetDisplay(chosen); });
        });
    }
    m_display->addActions(m_displays->actions());
}

void ZORHostObjectStyles::AddVisibilityTo(QMenu* menu) const
{
    menu->addActions({m_showHide, m_isolate, m_showAll});
}

void ZORHostObjectStyles::AddStylesTo(QMenu* menu) const
{
    menu->addAction(m_color);
    menu->addMenu(m_opacity);
    menu->addMenu(m_display);
    menu->addAction(m_usual);
}

QList<QAction*> ZORHostObjectStyles::GetActions() const
{
    return {m_showHide, m_isolate, m_showAll};
}

void ZORHostObjectStyles::Update()
{
    const ZORFeatStyles* const styles = GetStyles();
    const QList<ZORGeoGeometry*> drawn = styles ? GetDrawn() : QList<ZORGeoGeometry*>();
    for (QAction* action :
         {m_showHide, m_isolate, m_color, m_usual, m_opacity->menuAction(), m_display->menuAction()})
        action->setEnabled(!drawn.isEmpty());
    m_showAll->setEnabled(styles);
    const bool hides = drawn.isEmpty() || AnyVisible(*styles, drawn);
    m_showHide->setText(hides ? tr("&Hide") : tr("S&how"));
    ShowChoices(drawn);
}

void ZORHostObjectStyles::ShowChoices(const QList<ZORGeoGeometry*>& drawn)
{
    const ZORFeatStyles* const styles = GetStyles();
    const ZORFeatStyle style = drawn.isEmpty() ? ZORFeatStyle() : styles->Get(drawn.last());
    const int percent = int(std::lround(style.GetOpacity() * 100));
    for (const auto& [group, value] :
         {std::pair(m_opacities, percent), std::pair(m_displays, int(style.GetDisplay()))}) {
        group->setExclusionPolicy(QActionGroup::ExclusionPolicy::ExclusiveOptional); // none may fit
        for (QAction* action : group->actions())
            action->setChecked(!drawn.isEmpty() && action->data().toInt() == value);
    }
}

ZORFeatStyles* ZORHostObjectStyles::GetStyles() const
{
    auto* const container = qobject_cast<ZORFeatContainer*>(m_selection->GetContainer());
    return container ? container->GetStyles() : nullptr;
}

QList<ZORGeoGeometry*> ZORHostObjectStyles::GetDrawn() const
{
    return ZORHostDrawnObjects(m_selection->GetObjects());
}

void ZORHostObjectStyles::Change(const std::function<void(ZORFeatStyle&)>& change)
{
    ZORFeatStyles* const styles = GetStyles();
    if (!styles)
        return;
    for (ZORGeoGeometry* object : GetDrawn()) {
        ZORFeatStyle style = styles->Get(object);
        change(style);
        styles->Set({object}, style);
    }
    Update();
}

void ZORHostObjectStyles::OnShowHideTriggered()
{
    ZORFeatStyles* const styles = GetStyles();
    if (!styles)
        return;
    const QList<ZORGeoGeometry*> drawn = GetDrawn();
    styles->SetVisible(drawn, !AnyVisible(*styles, drawn));
    Update();
}

void ZORHostObjectStyles::OnIsolateTriggered()
{
    const auto* const container = qobject_cast<ZORFeatContainer*>(m_selection->GetContainer());
    const QList<ZORGeoGeometry*> drawn = GetDrawn();
    if (!container || drawn.isEmpty())
        return;
    const QSet<const ZORGeoGeometry*> kept(drawn.begin(), drawn.end());
    QList<ZORGeoGeometry*> others = ZORHostDrawnObjects(*container);
    others.removeIf([&kept](const ZORGeoGeometry* object) { return kept.contains(object); });
    GetStyles()->SetVisible(others, false);
    GetStyles()->SetVisible(drawn, true);
    Update();
}

void ZORHostObjectStyles::OnShowAllTriggered()
{
    const auto* const container = qobject_cast<ZORFeatContainer*>(m_selection->GetContainer());
    if (!container)
        return;
    GetStyles()->SetVisible(ZORHostDrawnObjects(*container), true);
    Update();
}

void ZORHostObjectStyles::OnColorTriggered()
{
    const ZORFeatStyles* const styles = GetStyles();
    const QList<ZORGeoGeometry*> drawn = styles ? GetDrawn() : QList<ZORGeoGeometry*>();
    if (drawn.isEmpty())
        return;
    auto* const dialog = new QColorDialog(styles->Get(drawn.last()).GetColor(), m_window);
    dialog->setObjectName("_ColorDialog");
    dialog->setWindowTitle(tr("Color"));
    dialog->setOption(QColorDialog::DontUseNativeDialog);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &QColorDialog::colorSelected, this, [this](const QColor& color) {
        Change([&color](ZORFeatStyle& style) { style.SetColor(color); });
    });
    dialog->open();
}
