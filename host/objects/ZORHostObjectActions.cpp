#include "objects/ZORHostObjectActions.h"

#include "objects/ZORHostObjectExport.h"
#include "objects/ZORHostObjectProperties.h"
#include "objects/ZORHostObjectRemoval.h"
#include "objects/ZORHostObjectSet.h"
#include "objects/ZORHostObjectStyles.h"
#include "objects/ZORHostPropertiesDialog.h"
#include "view/ZORHostDisplayName.h"
#include "view/ZORHostSelection.h"
#include "view/ZORHostView3D.h"

#include <ZORCommand/ZORCmdController.h>
#include <ZORCommonUI/ZORCmnPlainText.h>
#include <ZORFeature/ZORFeatDrawnOf.h>
#include <ZORGeometry/ZORGeoGeometry.h>
#include <ZORSystem/ZORSysException.h>

#include <QApplication>
#include <QContextMenuEvent>
#include <QMenu>
#include <QMouseEvent>

ZORHostObjectActions::ZORHostObjectActions(ZORHostSelection* selection, QWidget* window)
    : QObject(window)
    , m_selection(selection)
    , m_window(window)
    , m_styles(new ZORHostObjectStyles(selection, window))
    , m_menu(new QMenu(tr("&Edit"), window))
{
    m_edit =
        AddAction("_EditObjectAction", tr("&Edit..."), tr("Opens the dialog that made the selected object"));
    m_zoom = AddAction("_ZoomToAction", tr("&Zoom To"), tr("Fills the view with the selected objects"),
                       Qt::CTRL | Qt::Key_E);
    m_rename =
        AddAction("_RenameAction", tr("&Rename"), tr("Changes the name of the selected object"), Qt::Key_F2);
    m_delete =
        AddAction("_DeleteAction", tr("&Delete"), tr("Deletes the selected objects"), QKeySequence::Delete);
    m_export =
        AddAction("_ExportObjectsAction", tr("E&xport..."), tr("Writes the selected objects into a file"));
    m_properties = AddAction("_PropertiesAction", tr("&Properties"),
                             tr("Shows the values of the selected objects"), Qt::ALT | Qt::Key_Return);
    CreateMenu();
    connect(m_edit, &QAction::triggered, this, [this] { Edit(m_selection->GetLast()); });
    connect(m_zoom, &QAction::triggered, this, &ZORHostObjectActions::OnZoomTriggered);
    connect(m_rename, &QAction::triggered, this, [this] {
        if (ZORGeoGeometry* object = m_selection->GetLast())
            emit RenameRequested(object);
    });
    connect(m_delete, &QAction::triggered, this, &ZORHostObjectActions::OnDeleteTriggered);
    connect(m_export, &QAction::triggered, this, &ZORHostObjectActions::OnExportTriggered);
    connect(m_properties, &QAction::triggered, this, &ZORHostObjectActions::OnPropertiesTriggered);
    connect(m_menu, &QMenu::aboutToShow, this, &ZORHostObjectActions::Update);
    connect(m_selection, &ZORHostSelection::Changed, this, &ZORHostObjectActions::Update);
    Update();
}

QAction* ZORHostObjectActions::AddAction(const char* name, const QString& text, const QString& tip,
                                         const QKeySequence& key)
{
    auto* const action = new QAction(text, this);
    action->setObjectName(QLatin1String(name));
    action->setStatusTip(tip);
    action->setToolTip(tip);
    action->setShortcut(key);
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    return action;
}

void ZORHostObjectActions::CreateMenu()
{
    m_menu->setObjectName("_EditMenu");
    m_menu->addAction(m_edit);
    m_menu->addSeparator();
    m_styles->AddVisibilityTo(m_menu);
    m_menu->addAction(m_zoom);
    m_menu->addSeparator();
    m_styles->AddStylesTo(m_menu);
    m_menu->addSeparator();
    m_menu->addActions({m_rename, m_delete});
    m_menu->addSeparator();
    m_menu->addActions({m_export, m_properties});
}

void ZORHostObjectActions::AddKeysTo(QWidget* widget) const
{
    widget->addActions(m_styles->GetActions());
    widget->addActions({m_zoom, m_rename, m_delete, m_properties});
}

void ZORHostObjectActions::AddContextMenuTo(QWidget* view)
{
    view->installEventFilter(this);
}

void ZORHostObjectActions::AddTo(ZORHostView3D* view)
{
    AddKeysTo(view);
    AddContextMenuTo(view);
    connect(this, &ZORHostObjectActions::ZoomRequested, view,
            [view](const QList<ZORGeoGeometry*>& objects) { view->FitBox(ZORHostBoxOf(objects)); });
}

void ZORHostObjectActions::ShowMenu(const QPoint& globalPosition)
{
    m_menu->popup(globalPosition);
}

bool ZORHostObjectActions::eventFilter(QObject* watched, QEvent* event)
{
    auto* const view = static_cast<QWidget*>(watched);
    if (event->type() == QEvent::ContextMenu) {
        const auto* const asked = static_cast<QContextMenuEvent*>(event);
        if (asked->reason() == QContextMenuEvent::Keyboard)
            ShowMenu(view->mapToGlobal(view->rect().center()));
        return true; // of the mouse: a drag may follow
    }
    if (event->type() != QEvent::MouseButtonPress && event->type() != QEvent::MouseButtonRelease)
        return false;
    const auto* const mouse = static_cast<QMouseEvent*>(event);
    if (mouse->button() != Qt::RightButton)
        return false;
    const QPoint position = mouse->globalPosition().toPoint();
    if (event->type() == QEvent::MouseButtonPress) {
        m_pressed = view;
        m_pressPosition = position;
        return false;
    }
    const bool isClick =
        m_pressed == view
        && (position - m_pressPosition).manhattanLength() < QApplication::startDragDistance();
    m_pressed.clear();
    if (isClick) {
        ZORGeoGeometry* const hovered = m_selection->GetHovered();
        if (hovered && !m_selection->Contains(hovered))
            m_selection->Set({hovered});
        ShowMenu(position);
    }
    return false;
}

void ZORHostObjectActions::Update()
{
    m_styles->Update();
    const int count = m_selection->GetCount();
    m_edit->setEnabled(count == 1 && ZORCmdController::GetController()->GetEditor(m_selection->GetLast()));
    m_zoom->setEnabled(count > 0 && !ZORHostDrawnObjects(m_selection->GetObjects()).isEmpty());
    m_rename->setEnabled(count == 1);
    m_delete->setEnabled(count > 0);
    m_export->setEnabled(count > 0);
    m_properties->setEnabled(count > 0);
}

void ZORHostObjectActions::Activate(ZORGeoGeometry* object)
{
    if (!object)
        return;
    m_selection->Set({object});
    if (!Edit(object) && ZORFeatDrawnOf(object))
        OnPropertiesTriggered();
}

bool ZORHostObjectActions::Edit(ZORGeoGeometry* object)
{
    try {
        return object && ZORCmdController::GetController()->Edit(object);
    } catch (const ZORSysException& exception) {
        ZORCmnPlainText::ShowBox(QMessageBox::Warning, m_window, tr("Edit"), exception.GetMessage());
        return true;
    }
}

void ZORHostObjectActions::OnZoomTriggered()
{
    const QList<ZORGeoGeometry*> drawn = ZORHostDrawnObjects(m_selection->GetObjects());
    if (!drawn.isEmpty())
        emit ZoomRequested(drawn);
}

void ZORHostObjectActions::OnDeleteTriggered()
{
    const QList<ZORGeoGeometry*> objects = m_selection->GetObjects();
    if (objects.isEmpty())
        return;
    const ZORHostObjectRemoval removal(*m_selection->GetContainer(), objects);
    if (!removal.IsPossible()) {
        ZORCmnPlainText::ShowBox(QMessageBox::Warning, m_window, tr("Delete"), removal.GetRefusal());
        return;
    }
    QList<QPointer<ZORGeoGeometry>> chosen(objects.begin(), objects.end());
    if (ZORCmnPlainText::ShowBox(QMessageBox::Question, m_window, tr("Delete"), removal.GetQuestion(),
                                 QMessageBox::Yes | QMessageBox::No)
        != QMessageBox::Yes)
        return;
    chosen.removeAll(QPointer<ZORGeoGeometry>()); // the box runs the event loop
    const int count = ZORHostObjectRemoval::Remove({chosen.begin(), chosen.end()});
    emit Done(count == 1 ? tr("Deleted one object") : tr("Deleted %1 objects").arg(count));
}

void ZORHostObjectActions::OnExportTriggered()
{
    const QString message = ZORHostObjectExport::Run(m_selection->GetObjects(), m_window);
    if (!message.isEmpty())
        emit Done(message);
}

void ZORHostObjectActions::OnPropertiesTriggered()
{
    const QList<ZORGeoGeometry*> objects = m_selection->GetObjects();
    if (objects.isEmpty())
        return;
    auto* const dialog = new ZORHostPropertiesDialog(objects, m_window);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->show();
}
