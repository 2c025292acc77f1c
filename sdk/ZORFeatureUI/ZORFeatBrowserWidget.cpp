#include "ZORFeatBrowserWidget.h"

#include "ZORFeatBrowserModel_p.h"

#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatEnvironment.h>
#include <ZORGeometry/ZORGeoGeometry.h>
#include <ZORSystem/ZORSysApiTrace.h>

#include <QEvent>
#include <QHeaderView>
#include <QPainter>
#include <QScrollBar>
#include <QTreeView>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace {

/// One column that is as wide as its items, and at least as wide as the view. Says so when it is empty.
class BrowserView final : public QTreeView
{
public:
    explicit BrowserView(QWidget* parent)
        : QTreeView(parent)
    {
        setObjectName(QStringLiteral("_Tree"));
        setAccessibleName(ZORFeatBrowserWidget::tr("Feature browser"));
        setUniformRowHeights(true);
        setSelectionMode(ExtendedSelection);
        setVerticalScrollMode(ScrollPerPixel);
        setHorizontalScrollMode(ScrollPerPixel);
        setContextMenuPolicy(Qt::CustomContextMenu);
        setEditTriggers(NoEditTriggers);
        header()->setStretchLastSection(false);
        header()->setSectionResizeMode(QHeaderView::ResizeToContents);
        header()->setSectionsClickable(false);
    }

protected:
    void resizeEvent(QResizeEvent* event) override
    {
        QTreeView::resizeEvent(event);
        header()->setMinimumSectionSize(viewport()->width());
    }

    void paintEvent(QPaintEvent* event) override
    {
        QTreeView::paintEvent(event);
        if (model() && model()->rowCount() > 0)
            return;
        QPainter painter(viewport());
        painter.setPen(palette().color(QPalette::Text));
        painter.drawText(viewport()->rect().adjusted(8, 8, -8, -8), Qt::AlignHCenter | Qt::TextWordWrap,
                         ZORFeatBrowserWidget::tr("No geometry yet"));
    }
};

} // namespace

class ZORFeatBrowserWidget::Private
{
public:
    explicit Private(ZORFeatBrowserWidget* widget)
        : q_ptr(widget)
        , model(new ZORFeatBrowserModel(widget))
        , view(new BrowserView(widget))
    {
    }

    void Connect();
    void ChangeTo(ZORFeatEnvironment* newEnvironment);
    void ExpandNewItems(const QModelIndex& parent, int first, int last);
    void OnFlushStarted();
    void OnFlushFinished();
    void OnSelectionChanged();
    void KeepAnchor();
    void RestoreAnchor();
    QModelIndexList SelectedFromTopToBottom() const;

    ZORFeatBrowserWidget* q_ptr;
    QPointer<ZORFeatEnvironment> environment; // not owned
    ZORFeatBrowserModel* model;
    QTreeView* view;

    // The uppermost visible item and the place of its upper edge while the model changes.
    QPersistentModelIndex anchor;
    int anchorTop = 0;

    bool isFlushing = false;       // receivers of signals are kept out of the changes of the model
    bool selectionChanged = false; // meanwhile
};

void ZORFeatBrowserWidget::Private::Connect()
{
    using Model = ZORFeatBrowserModel;
    using Widget = ZORFeatBrowserWidget;
    Widget* const widget = q_ptr;
    QObject::connect(
        model, &Model::rowsInserted, widget,
        [this](const QModelIndex& parent, int first, int last) { ExpandNewItems(parent, first, last); });
    QObject::connect(model, &Model::FlushStarted, widget, [this] { OnFlushStarted(); });
    QObject::connect(model, &Model::FlushFinished, widget, [this] { OnFlushFinished(); });
    QObject::connect(view, &QTreeView::activated, widget, [this](const QModelIndex& index) {
        if (ZORGeoGeometry* geometry = model->GetGeometry(index))
            emit q_ptr->GeometryActivated(geometry);
    });
    QObject::connect(view->selectionModel(), &QItemSelectionModel::selectionChanged, widget,
                     [this] { OnSelectionChanged(); });
    QObject::connect(view, &QWidget::customContextMenuRequested, widget, [this](const QPoint& position) {
        emit q_ptr->ContextMenuRequested(model->GetGeometry(view->indexAt(position)),
                                         view->viewport()->mapToGlobal(position));
    });
}

void ZORFeatBrowserWidget::Private::ChangeTo(ZORFeatEnvironment* newEnvironment)
{
    view->selectionModel()->clear(); // a reset of the model would drop the selection silently
    if (environment)
        QObject::disconnect(environment, nullptr, q_ptr, nullptr);
    environment = newEnvironment;
    model->SetContainer(environment ? environment->GetContainer() : nullptr);
    if (environment) {
        QObject::connect(environment, &ZORFeatEnvironment::AboutToBeDestroyed, q_ptr,
                         [this] { ChangeTo(nullptr); });
    }
}

void ZORFeatBrowserWidget::Private::ExpandNewItems(const QModelIndex& parent, int first, int last)
{
    if (parent.isValid()) // only items of the top level start expanded
        return;
    for (int row = first; row <= last; ++row) {
        const QModelIndex index = model->index(row, 0, parent);
        if (model->IsInitiallyExpanded(index))
            view->expand(index);
    }
}

void ZORFeatBrowserWidget::Private::OnFlushStarted()
{
    isFlushing = true;
    KeepAnchor();
}

void ZORFeatBrowserWidget::Private::OnFlushFinished()
{
    RestoreAnchor();
    isFlushing = false;
    if (std::exchange(selectionChanged, false))
        OnSelectionChanged();
}

void ZORFeatBrowserWidget::Private::OnSelectionChanged()
{
    if (isFlushing)
        selectionChanged = true;
    else
        emit q_ptr->SelectionChanged(q_ptr->GetSelectedGeometries());
}

void ZORFeatBrowserWidget::Private::KeepAnchor()
{
    // Somebody who looks at the start of the tree wants to see what is inserted there.
    const bool atStart = view->verticalScrollBar()->value() == 0;
    anchor = atStart ? QModelIndex() : view->indexAt(QPoint(0, 0));
    anchorTop = anchor.isValid() ? view->visualRect(anchor).top() : 0;
}

void ZORFeatBrowserWidget::Private::RestoreAnchor()
{
    if (!anchor.isValid())
        return;
    const QRect rect = view->visualRect(anchor); // lays the items out again
    QScrollBar* const bar = view->verticalScrollBar();
    if (rect.isValid())
        bar->setValue(bar->value() + rect.top() - anchorTop);
    anchor = QModelIndex();
}

QModelIndexList ZORFeatBrowserWidget::Private::SelectedFromTopToBottom() const
{
    QItemSelection ranges = view->selectionModel()->selection();
    const auto path = [](QModelIndex index) {
        QList<int> rows;
        for (; index.isValid(); index = index.parent())
            rows.prepend(index.row());
        return rows;
    };
    const auto isAbove = [&path](const QItemSelectionRange& a, const QItemSelectionRange& b) {
        const QList<int> pathA = path(a.topLeft());
        const QList<int> pathB = path(b.topLeft());
        return std::lexicographical_compare(pathA.begin(), pathA.end(), pathB.begin(), pathB.end());
    };
    std::sort(ranges.begin(), ranges.end(), isAbove);
    return ranges.indexes();
}

ZORFeatBrowserWidget::ZORFeatBrowserWidget(QWidget* parent)
    : QWidget(parent)
    , d(std::make_unique<Private>(this))
{
    d->view->setModel(d->model);
    d->model->SetPalette(palette());
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(d->view);
    setFocusProxy(d->view);
    d->Connect();
}

ZORFeatBrowserWidget::~ZORFeatBrowserWidget() = default;

void ZORFeatBrowserWidget::SetEnvironment(ZORFeatEnvironment* environment)
{
    ZOR_TRACE_CALL(environment);
    if (environment != d->environment)
        d->ChangeTo(environment);
}

ZORFeatEnvironment* ZORFeatBrowserWidget::GetEnvironment() const
{
    return d->environment;
}

ZORGeoGeometry* ZORFeatBrowserWidget::GetCurrentGeometry() const
{
    return d->model->GetGeometry(d->view->currentIndex());
}

QList<ZORGeoGeometry*> ZORFeatBrowserWidget::GetSelectedGeometries() const
{
    QList<ZORGeoGeometry*> geometries;
    for (const QModelIndex& index : d->SelectedFromTopToBottom()) {
        if (ZORGeoGeometry* geometry = d->model->GetGeometry(index))
            geometries.append(geometry);
    }
    return geometries;
}

bool ZORFeatBrowserWidget::SelectGeometry(ZORGeoGeometry* geometry)
{
    ZOR_TRACE_CALL(geometry);
    d->model->Flush();
    const QModelIndex index = geometry ? d->model->GetIndex(geometry) : QModelIndex();
    if (!index.isValid()) {
        if (!geometry)
            d->view->selectionModel()->clear();
        return false;
    }
    d->view->selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect);
    d->view->scrollTo(index);
    return true;
}

void ZORFeatBrowserWidget::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::PaletteChange) {
        d->model->SetPalette(palette());
        d->view->viewport()->update();
    }
    QWidget::changeEvent(event);
}
