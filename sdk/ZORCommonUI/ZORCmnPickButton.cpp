#include "ZORCmnPickButton.h"

#include <ZORCommand/ZORCmdController.h>
#include <ZORSystem/ZORSysApiTrace.h>

#include <QKeyEvent>
#include <QPainter>
#include <QPointer>

namespace {

constexpr int kIconSize = 16;

// A circle with a cross through it.
QIcon MakeIcon(const QColor& color, double devicePixelRatio)
{
    QPixmap pixmap(QSize(kIconSize, kIconSize) * devicePixelRatio);
    pixmap.setDevicePixelRatio(devicePixelRatio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(color, 1.4));
    painter.translate(kIconSize / 2.0, kIconSize / 2.0);
    painter.drawEllipse(QPointF(), 4.5, 4.5);
    for (int i = 0; i < 4; ++i) {
        painter.drawLine(QPointF(2, 0), QPointF(7, 0));
        painter.rotate(90);
    }
    return QIcon(pixmap);
}

} // namespace

class ZORCmnPickButton::Private
{
public:
    ZORCmdPickRequest* request = nullptr; // child
    QPointer<QWidget> field;              // not owned
    QPointer<QWidget> window;             // whose keys are watched while the request is active; not owned
};

ZORCmnPickButton::ZORCmnPickButton(ZORCmdPickRequest::Kinds kinds, const QString& prompt, QWidget* field)
    : QToolButton(field->parentWidget())
    , d(std::make_unique<Private>())
{
    ZOR_TRACE_CALL(kinds, prompt, field);
    d->request = new ZORCmdPickRequest(kinds, prompt, this);
    d->field = field;
    setCheckable(true);
    setToolTip(prompt);
    setAccessibleName(tr("Pick in the view"));
    setIconSize({kIconSize, kIconSize});
    UpdateIcon();
    const auto* const controller = ZORCmdController::GetController();
    setHidden(!controller->GetPickAnswerer());
    connect(controller, &ZORCmdController::PickAnswererChanged, this,
            [this, controller] { setHidden(!controller->GetPickAnswerer()); });
    connect(this, &QToolButton::clicked, this, &ZORCmnPickButton::OnClicked);
    connect(d->request, &ZORCmdPickRequest::Picked, this, &ZORCmnPickButton::Picked);
    connect(d->request, &ZORCmdPickRequest::Ended, this, &ZORCmnPickButton::OnEnded);
}

ZORCmnPickButton::~ZORCmnPickButton()
{
    delete d->request; // while its receivers are there
}

ZORCmdPickRequest* ZORCmnPickButton::GetRequest() const
{
    return d->request;
}

void ZORCmnPickButton::OnClicked(bool isChecked)
{
    if (!isChecked) {
        d->request->Cancel();
        return;
    }
    d->window = window();
    d->window->installEventFilter(this);
    d->request->Start();
}

void ZORCmnPickButton::OnEnded()
{
    setChecked(false);
    if (!d->window)
        return;
    d->window->removeEventFilter(this);
    if (d->window->isVisible()) {
        d->window->raise();
        d->window->activateWindow();
        if (d->field)
            d->field->setFocus();
    }
    d->window.clear();
}

bool ZORCmnPickButton::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == d->window && event->type() == QEvent::KeyPress
        && static_cast<const QKeyEvent*>(event)->key() == Qt::Key_Escape) {
        d->request->Cancel();
        return true;
    }
    return QToolButton::eventFilter(watched, event);
}

void ZORCmnPickButton::changeEvent(QEvent* event)
{
    QToolButton::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::StyleChange)
        UpdateIcon();
}

void ZORCmnPickButton::hideEvent(QHideEvent* event)
{
    QToolButton::hideEvent(event);
    if (!isVisible())
        d->request->Cancel();
}

void ZORCmnPickButton::UpdateIcon()
{
    setIcon(MakeIcon(palette().color(QPalette::ButtonText), devicePixelRatioF()));
}
