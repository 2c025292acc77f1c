#include "ZORFeatBrowserWidget.h"

#include "ZORFeatBrowserFilter_p.h"
#include "ZORFeatBrowserModel_p.h"
#include "ZORFeatBrowserSearch_p.h"
#include "ZORFeatBrowserView_p.h"

#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatEnvironment.h>
#include <ZORGeometry/ZORGeoGeometry.h>
#include <ZORSystem/ZORSysApiTrace.h>

#include <QEvent>
#include <QScrollBar>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

class ZORFeatBrowserWidget::Private
{
public:
    explicit Private(ZORFeatBrowserWidget* widget)
        : q_ptr(widget)
        , model(new ZORFeatBrowserModel(widget))
        , view(new ZORFeatBrowserView(widget))
    {
    }

    void Connect();
    void ShowModel(QAbstractItemModel* shown);
    void ChangeTo(ZORFeatEnvironment* newEnvironment);
    void ExpandNewItems(const QModelIndex& parent, int first, int last);
    void OnFlushStarted();
    void OnFlushFinished();
    void OnSelectionChanged();
    void OnEyeClicked(const QModelIndex& index);
    void KeepAnchor();
    void RestoreAnchor();
    QModelIndexList SelectedFromTopToBottom() const;
    void AddSearchField();
    QModelIndex ToSource(const QModelIndex& index) const;
    ZORGeoGeometry* GeometryOf(const QModelIndex& index) const;
    QModelIndex IndexOf(const ZORGeoGeometry* geometry) const;

    ZORFeatBrowserWidget* q_ptr;
    QPointer<ZORFeatEnvironment> environment; // not owned
    ZORFeatBrowserModel* model;
    ZORFeatBrowserView* view;
    Options options;
    ZORFeatBrowserFilter* filter = nullptr; // between model and view; null without the option SearchField
    ZORFeatBrowserSearch* search = nullptr;

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
    QObject::connect(model, &Model::FlushStarted, widget, [this] { OnFlushStarted(); });
    QObject::connect(model, &Model::FlushFinished, widget, [this] { OnFlushFinished(); });
    QObject::connect(view, &QTreeView::activated, widget, [this](const QModelIndex& index) {
        if (ZORGeoGeometry* geometry = GeometryOf(index))
            emit q_ptr->GeometryActivated(geometry);
    });
    QObject::connect(model, &Model::EyesChanged, widget, [this] { view->viewport()->update(); });
    QObject::connect(view, &ZORFeatBrowserView::EyeClicked, widget,
                     [this](const QModelIndex& index) { OnEyeClicked(index); });
    QObject::connect(view, &ZORFeatBrowserView::Hovered, widget,
                     [this](const QModelIndex& index) { emit q_ptr->GeometryHovered(GeometryOf(index)); });
    QObject::connect(view, &QWidget::customContextMenuRequested, widget, [this](const QPoint& position) {
        emit q_ptr->ContextMenuRequested(GeometryOf(view->indexAt(position)),
                                         view->viewport()->mapToGlobal(position));
    });
}

void ZORFeatBrowserWidget::Private::ShowModel(QAbstractItemModel* shown)
{
    const std::unique_ptr<QItemSelectionModel> former(view->selectionModel());
    if (QAbstractItemModel* const before = view->model())
        QObject::disconnect(before, &QAbstractItemModel::rowsInserted, q_ptr, nullptr);
    view->setModel(shown);
    QObject::connect(
        shown, &QAbstractItemModel::rowsInserted, q_ptr,
        [this](const QModelIndex& parent, int first, int last) { ExpandNewItems(parent, first, last); });
    QObject::connect(view->selectionModel(), &QItemSelectionModel::selectionChanged, q_ptr,
                     [this] { OnSelectionChanged(); });
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
    if (search && search->IsSearching()) {
        view->expandRecursively(parent); // matches are shown
        return;
    }
    if (parent.isValid()) // only items of the top level start expanded
        return;
    for (int row = first; row <= last; ++row) {
        const QModelIndex index = view->model()->index(row, 0, parent);
        if (model->IsInitiallyExpanded(ToSource(index)))
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

void ZORFeatBrowserWidget::Private::OnEyeClicked(const QModelIndex& index)
{
    QModelIndexList indexes{index};
    if (view->selectionModel()->isSelected(index))
        indexes = view->selectionModel()->selectedRows();
    for (QModelIndex& each : indexes)
        each = ToSource(each);
    model->ToggleEyes(indexes, ToSource(index));
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
    QModelIndexList indexes = ranges.indexes();
    indexes.removeIf([](const QModelIndex& index) { return index.column() > 0; });
    return indexes;
}

QModelIndex ZORFeatBrowserWidget::Private::ToSource(const QModelIndex& index) const
{
    return filter ? filter->mapToSource(index) : index;
}

ZORGeoGeometry* ZORFeatBrowserWidget::Private::GeometryOf(const QModelIndex& index) const
{
    return model->GetGeometry(ToSource(index));
}

QModelIndex ZORFeatBrowserWidget::Private::IndexOf(const ZORGeoGeometry* geometry) const
{
    const QModelIndex index = model->GetIndex(geometry);
    return filter ? filter->mapFromSource(index) : index;
}

void ZORFeatBrowserWidget::Private::AddSearchField()
{
    filter = new ZORFeatBrowserFilter(q_ptr);
    filter->setSourceModel(model);
    ShowModel(filter);
    search = new ZORFeatBrowserSearch(filter, view, q_ptr);
    static_cast<QVBoxLayout*>(q_ptr->layout())->insertWidget(0, search);
    QObject::connect(search, &ZORFeatBrowserSearch::FilterAboutToChange, q_ptr,
                     [this] { isFlushing = true; });
    QObject::connect(search, &ZORFeatBrowserSearch::FilterChanged, q_ptr, [this](bool isSearching) {
        isFlushing = false;
        selectionChanged = false; // what the search hides stays selected for the application
        view->SetEmptyText(isSearching ? tr("No object with this name") : tr("No geometry yet"));
        emit q_ptr->SearchChanged();
        if (!isSearching && view->currentIndex().isValid())
            view->scrollTo(view->currentIndex());
    });
}

ZORFeatBrowserWidget::ZORFeatBrowserWidget(QWidget* parent)
    : QWidget(parent)
    , d(std::make_unique<Private>(this))
{
    d->ShowModel(d->model);
    d->view->SetEmptyText(tr("No geometry yet"));
    d->model->SetPalette(palette());
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(d->view);
    setFocusProxy(d->view);
    d->Connect();
}

ZORFeatBrowserWidget::~ZORFeatBrowserWidget() = default;

void ZORFeatBrowserWidget::SetOptions(Options options)
{
    d->options = options;
    d->model->SetOptions(options);
    if (options.testFlag(Option::SearchField))
        d->AddSearchField();
    d->view->SetOptions(options);
}

QLineEdit* ZORFeatBrowserWidget::GetSearchField() const
{
    return d->search;
}

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
    return d->GeometryOf(d->view->currentIndex());
}

QList<ZORGeoGeometry*> ZORFeatBrowserWidget::GetSelectedGeometries() const
{
    QList<ZORGeoGeometry*> geometries;
    for (const QModelIndex& index : d->SelectedFromTopToBottom()) {
        if (ZORGeoGeometry* geometry = d->GeometryOf(index))
            geometries.append(geometry);
    }
    return geometries;
}

bool ZORFeatBrowserWidget::SelectGeometry(ZORGeoGeometry* geometry)
{
    ZOR_TRACE_CALL(geometry);
    d->model->Flush();
    const QModelIndex index = geometry ? d->IndexOf(geometry) : QModelIndex();
    if (!index.isValid()) {
        if (!geometry)
            d->view->selectionModel()->clear();
        return false;
    }
    d->view->selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect
                                                          | QItemSelectionModel::Rows);
    d->view->scrollTo(index);
    return true;
}

void ZORFeatBrowserWidget::SelectGeometries(const QList<ZORGeoGeometry*>& geometries)
{
    d->model->Flush();
    QModelIndexList indexes;
    for (const ZORGeoGeometry* geometry : geometries) {
        if (const QModelIndex index = d->IndexOf(geometry); index.isValid())
            indexes.append(index);
    }
    if (indexes.isEmpty()) {
        d->view->selectionModel()->clearSelection();
        return;
    }
    const QModelIndex last = indexes.last();
    const bool wasSelected = d->view->selectionModel()->isSelected(last);
    if (!wasSelected) {
        d->view->selectionModel()->setCurrentIndex(last, QItemSelectionModel::NoUpdate);
        d->view->scrollTo(last);
    }
    d->view->SelectExactly(indexes);
}

bool ZORFeatBrowserWidget::RenameGeometry(ZORGeoGeometry* geometry)
{
    d->model->Flush();
    const QModelIndex index = geometry ? d->IndexOf(geometry) : QModelIndex();
    if (!index.isValid() || !d->options.testFlag(Option::Renaming))
        return false;
    d->view->scrollTo(index);
    d->view->setCurrentIndex(index);
    d->view->edit(index);
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
