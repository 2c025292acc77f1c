#include "view/ZORHostPickTool.h"

#include "view/ZORHostSelection.h"
#include "view/ZORHostView3D.h"
#include "view/ZORHostViewMarks.h"

#include <ZORCommand/ZORCmdPickRequest.h>
#include <ZORFeature/ZORFeatShapeOf.h>
#include <ZORGeometry/ZORGeoCurve.h>
#include <ZORGeometry/ZORGeoPoint.h>
#include <ZORGeometry/ZORGeoSurface.h>

#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QPolygonF>

#include <algorithm>

namespace {

constexpr int kPromptMargin = 8; // pixels
constexpr ZORCmdPickRequest::Kinds kOnSurfaces =
    ZORCmdPickRequest::Kinds(ZORCmdPickRequest::Surfaces) | ZORCmdPickRequest::SurfaceLocations;

} // namespace

ZORHostPickTool::ZORHostPickTool(ZORHostView3D* view, ZORHostSelection* selection, QObject* parent)
    : QObject(parent)
    , m_view(view)
    , m_selection(selection)
    , m_prompt(new QLabel(view))
{
    m_prompt->setObjectName("_PickPrompt");
    m_prompt->setTextFormat(Qt::PlainText);
    m_prompt->setWordWrap(true);
    m_prompt->setAlignment(Qt::AlignCenter);
    m_prompt->setMargin(6);
    m_prompt->setFrameShape(QFrame::Box);
    m_prompt->setAutoFillBackground(true);
    m_prompt->setBackgroundRole(QPalette::ToolTipBase);
    m_prompt->setForegroundRole(QPalette::ToolTipText);
    m_prompt->setAttribute(Qt::WA_TransparentForMouseEvents);
    m_prompt->hide();
    view->installEventFilter(this);
}

ZORHostPickTool::~ZORHostPickTool()
{
    delete m_prompt;
    if (m_view && m_view->GetTool() == this) {
        m_view->SetTool(m_toolBefore);
        m_view->unsetCursor();
    }
}

bool ZORHostPickTool::IsBlocked() const
{
    const QWidget* const modal = QApplication::activeModalWidget();
    return !m_view || (modal && modal != m_view->window() && !modal->isAncestorOf(m_view));
}

void ZORHostPickTool::BeginPick(ZORCmdPickRequest* request)
{
    m_request = request;
    if (IsBlocked()) {
        QMetaObject::invokeMethod(request, &ZORCmdPickRequest::Cancel, Qt::QueuedConnection);
        return;
    }
    m_toolBefore = m_view->GetTool();
    m_view->SetTool(this);
    m_view->setCursor(Qt::CrossCursor);
    connect(request, &ZORCmdPickRequest::PromptChanged, this, &ZORHostPickTool::ShowPrompt);
    connect(request, &ZORCmdPickRequest::PreviewChanged, m_view,
            static_cast<void (QWidget::*)()>(&QWidget::update));
    ShowPrompt();
    m_view->window()->activateWindow();
    m_view->setFocus(Qt::OtherFocusReason);
}

void ZORHostPickTool::EndPick(ZORCmdPickRequest* request)
{
    disconnect(request, nullptr, this, nullptr);
    m_request.clear();
    if (!m_view)
        return;
    disconnect(request, nullptr, m_view, nullptr);
    if (m_view->GetTool() == this)
        m_view->SetTool(m_toolBefore);
    m_view->unsetCursor();
    m_prompt->hide();
    m_view->update();
}

void ZORHostPickTool::ShowPrompt()
{
    // The prompts of sequences name their keys, which depend on what there is to end or to take back.
    const bool isSequence = m_request->GetExtent() == ZORCmdPickRequest::Extent::Sequence;
    m_prompt->setText(isSequence ? m_request->GetPrompt()
                                 : QStringLiteral("%1\n%2").arg(m_request->GetPrompt(), tr("Esc cancels")));
    m_prompt->setAccessibleName(m_prompt->text());
    PlacePrompt();
    m_prompt->show();
    m_prompt->raise();
}

void ZORHostPickTool::PlacePrompt()
{
    const QFontMetrics metrics = m_prompt->fontMetrics();
    const int text =
        metrics.boundingRect(QRect(0, 0, 10'000, 1'000), Qt::AlignCenter, m_prompt->text()).width();
    const int width =
        std::clamp(text + 4 * m_prompt->margin(), 1, std::max(1, m_view->width() - 2 * kPromptMargin));
    m_prompt->resize(width, m_prompt->heightForWidth(width));
    m_prompt->move((m_view->width() - width) / 2, kPromptMargin);
}

// Of the view, which may be in its destructor and then sends other events.
bool ZORHostPickTool::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Resize && m_request && m_prompt)
        PlacePrompt();
    return QObject::eventFilter(watched, event);
}

bool ZORHostPickTool::Accepts(QObject* owner) const
{
    const auto* const object = qobject_cast<const ZORGeoGeometry*>(owner);
    if (!m_request || !object)
        return false;
    const ZORGeoGeometry* const shape = ZORFeatShapeOf(object);
    const ZORCmdPickRequest::Kinds kinds = m_request->GetKinds();
    const bool fits =
        (kinds.testFlag(ZORCmdPickRequest::Points) && qobject_cast<const ZORGeoPoint*>(shape))
        || (kinds.testFlag(ZORCmdPickRequest::Curves) && qobject_cast<const ZORGeoCurve*>(shape))
        || ((kinds & kOnSurfaces) && qobject_cast<const ZORGeoSurface*>(shape));
    return fits && m_request->Accepts(object);
}

ZORCmdPick ZORHostPickTool::Find(const QPointF& position) const
{
    const ZORVisPickResult hit = m_view->PickAt(position, [this](QObject* owner) { return Accepts(owner); });
    ZORCmdPick pick;
    pick.object = qobject_cast<ZORGeoGeometry*>(hit.owner);
    if (!pick.object)
        return {};
    pick.point = hit.point;
    if (const auto* const surface = ZORFeatShapeOf<ZORGeoSurface>(pick.object))
        pick.location = surface->Project(hit.point);
    return pick;
}

void ZORHostPickTool::SetTarget(const ZORCmdPick& pick)
{
    const auto target = pick.object ? std::optional(pick.point) : std::nullopt;
    if (m_selection)
        m_selection->SetHovered(pick.object);
    if (target == m_target)
        return;
    m_target = target;
    if (m_view)
        m_view->update();
}

void ZORHostPickTool::Hover(const QPointF& position)
{
    SetTarget(Find(position));
}

void ZORHostPickTool::Leave()
{
    SetTarget({});
}

void ZORHostPickTool::Click(const QPointF& position, Qt::KeyboardModifiers)
{
    const ZORCmdPick pick = Find(position);
    SetTarget(pick);
    if (pick.object && m_request)
        m_request->Answer(pick);
}

// Its first click has answered; a second answer at the same place is not meant.
void ZORHostPickTool::DoubleClick(const QPointF&) {}

void ZORHostPickTool::SelectBand(const QPointF&, const QPointF&, Qt::KeyboardModifiers) {}

bool ZORHostPickTool::PressKey(const QKeyEvent& event)
{
    if (!m_request)
        return false;
    switch (event.key()) {
    case Qt::Key_Escape:
        m_request->Cancel();
        return true;
    case Qt::Key_Backspace:
        m_request->TakeBack();
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        m_request->Complete();
        return true;
    default:
        return false;
    }
}

void ZORHostPickTool::Paint(QPainter& painter)
{
    const QList<QList<ZORMathPoint>> chains =
        m_request ? m_request->GetPreview() : QList<QList<ZORMathPoint>>();
    for (const QList<ZORMathPoint>& chain : chains) {
        QPolygonF path;
        for (const ZORMathPoint& point : chain)
            path.append(m_view->ToPosition(point));
        ZORHostViewMarks::PaintPath(painter, *m_view, path);
    }
    if (m_target)
        ZORHostViewMarks::PaintTarget(painter, *m_view, m_view->ToPosition(*m_target));
}
