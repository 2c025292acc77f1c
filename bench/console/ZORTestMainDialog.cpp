#include "console/ZORTestMainDialog.h"

#include "console/ZORTestGeoInspectionDlg.h"
#include "console/ZORTestMainDialogPrivate.h"
#include "core/ZORTestCommand.h"
#include "core/ZORTestCommandRegistry.h"
#include "core/ZORTestDialog.h"
#include "core/ZORTestErrorBox.h"

#include <ZORDebug/ZORDebugVizContainer.h>
#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatEnvironment.h>
#include <ZORSystem/ZORSysException.h>
#include <ZORSystem/ZORSysStackMonitor.h>
#include <ZORVisualization/ZORVisVirtualObject.h> // argument of connected signals

ZORTestMainDialog::ZORTestMainDialog(QWidget* parent)
    : QMainWindow(parent)
    , d(std::make_unique<ZORTestMainDialogPrivate>())
{
    setAttribute(Qt::WA_DeleteOnClose);
    d->ui.setupUi(this);
    d->environment.SetUiParent(this);

    ZORFeatEnvironment* environment = d->environment.GetEnvironment();
    d->containerBrowser.emplace(environment->GetContainer(), d->ui._ContTypeCombo, d->ui._ContTable);
    d->visualizationList.emplace(&d->environment, d->ui._VisList);
    d->debugVisualization.emplace(environment);
    d->stackBrowser.emplace(d->ui._StackMonLabelCmb, d->ui._StackMonTraceCmb, d->ui._StackMonEdit);

    Connect();
    d->ui._Browser->SetEnvironment(environment);
    d->containerBrowser->FillTypes();
    d->ui._TabWidget->setCurrentWidget(d->ui._ContainerTab);
    RefreshStackLabels();
}

ZORTestMainDialog::~ZORTestMainDialog()
{
    for (const QMetaObject::Connection& connection : std::as_const(d->environmentConnections))
        disconnect(connection);
    // Open dialogs may use the environment until they are gone.
    qDeleteAll(findChildren<ZORTestDialog*>(QString(), Qt::FindDirectChildrenOnly));
}

void ZORTestMainDialog::Connect()
{
    using Console = ZORTestMainDialog;
    const Ui::ZORTestMainDialog& ui = d->ui;
    connect(ui._Menu, &QMenuBar::triggered, this, &Console::OnMenuTriggered);

    connect(ui._ShowDebugChk, &QCheckBox::toggled, this, &Console::UpdateDebugVis);
    connect(ui._ClearDebugBtn, &QPushButton::clicked, this, &Console::RemoveDebugVis);
    connect(ui._VisEditBtn, &QPushButton::clicked, this, &Console::EditSelectedVis);
    connect(ui._VisRemoveBtn, &QPushButton::clicked, this, &Console::RemoveSelectedVis);
    connect(ui._VisRemoveAllBtn, &QPushButton::clicked, this, &Console::RemoveAllVis);

    connect(ui._ContRefreshBtn, &QPushButton::clicked, this, &Console::RefreshContainer);
    connect(ui._ContTypeCombo, &QComboBox::currentTextChanged, this, &Console::RefreshContainer);
    connect(ui._ContInspectBtn, &QPushButton::clicked, this, &Console::InspectSelectedGeo);
    connect(ui._ContVisuBtn, &QPushButton::clicked, this, &Console::VisualizeSelectedGeo);
    connect(ui._ContDeleteBtn, &QPushButton::clicked, this, &Console::DeleteSelectedGeo);

    connect(ui._StackMonRefreshBtn, &QPushButton::clicked, this, &Console::RefreshStackLabels);
    connect(ui._StackMonLabelCmb, &QComboBox::currentTextChanged, this, &Console::RefreshStackTraces);
    connect(ui._StackMonTraceCmb, &QComboBox::currentTextChanged, this, &Console::RefreshStackTrace);
    connect(ui._StackMonClearLabelTracesBtn, &QPushButton::clicked, this, &Console::ClearLabelTraces);
    connect(ui._StackMonClearAllTracesBtn, &QPushButton::clicked, this, &Console::ClearAllTraces);

    connect(ui._TransBeginBtn, &QPushButton::clicked, this, &Console::BeginTransaction);
    connect(ui._TransEndBtn, &QPushButton::clicked, this, &Console::EndTransaction);

    const ZORVisEnvironment* environment = d->environment.GetEnvironment();
    d->environmentConnections = {
        connect(environment, &ZORVisEnvironment::ObjectAdded, this, &Console::RefreshVisualization),
        connect(environment, &ZORVisEnvironment::ObjectRemoved, this, &Console::RefreshVisualization),
    };
}

void ZORTestMainDialog::OnMenuTriggered(QAction* action)
{
    try {
        const QByteArray className = action->property("command").toByteArray();
        ZORTestCommand* command = ZORTestCommandRegistry::Instance().Create(className, &d->environment);
        if (!command) {
            ShowError(tr("Command not registered"));
            return;
        }
        command->setProperty("actionText", action->text());
        command->setProperty("action", QVariant::fromValue(action));
        connect(command, &ZORTestCommand::Finished, this, &ZORTestMainDialog::RefreshContainer);
        command->Execute();
    } catch (const ZORSysException& exception) {
        ShowError(exception.GetMessage());
    }
}

void ZORTestMainDialog::RefreshContainer()
{
    d->containerBrowser->Refresh();
}

void ZORTestMainDialog::VisualizeSelectedGeo()
{
    if (ZORGeoGeometry* geometry = d->containerBrowser->GetCurrentGeometry())
        Visualize(geometry);
}

void ZORTestMainDialog::Visualize(ZORGeoGeometry* geometry)
{
    try {
        switch (d->visualizationList->Show(geometry)) {
        case ZORTestVisualizationList::Result::Shown:
            break;
        case ZORTestVisualizationList::Result::NoVisualizer:
            ShowError(tr("No visualizer for that type of geometry"));
            break;
        case ZORTestVisualizationList::Result::NotCreated:
            ShowError(tr("Visualization creation failed"));
            break;
        }
    } catch (const ZORSysException& exception) {
        ShowError(exception.GetMessage());
    }
}

void ZORTestMainDialog::InspectSelectedGeo()
{
    ZORGeoGeometry* geometry = d->containerBrowser->GetCurrentGeometry();
    if (!geometry)
        return;
    if (!d->inspectionDialog)
        d->inspectionDialog = new ZORTestGeoInspectionDlg(this);
    d->inspectionDialog->SetGeometry(geometry);
    d->inspectionDialog->show();
}

void ZORTestMainDialog::DeleteSelectedGeo()
{
    try {
        switch (d->containerBrowser->DeleteCurrent()) {
        case ZORTestContainerBrowser::Deletion::NoRow:
            return;
        case ZORTestContainerBrowser::Deletion::Deleted:
            break;
        case ZORTestContainerBrowser::Deletion::Refused:
            ShowError(tr("Geometry reference is not zero. The only geometry with non-zero reference count "
                         "that can be deleted are features."));
            break;
        }
    } catch (const ZORSysException& exception) {
        ShowError(exception.GetMessage());
    }
    RefreshContainer();
}

void ZORTestMainDialog::RefreshVisualization()
{
    d->visualizationList->Refresh();
}

void ZORTestMainDialog::EditSelectedVis()
{
    ZORGeoGeometry* geometry = d->visualizationList->GetCurrentGeometry();
    if (!geometry)
        return;
    d->visualizationList->Remove(geometry);
    Visualize(geometry);
}

void ZORTestMainDialog::RemoveSelectedVis()
{
    if (ZORGeoGeometry* geometry = d->visualizationList->GetCurrentGeometry())
        d->visualizationList->Remove(geometry);
}

void ZORTestMainDialog::RemoveAllVis()
{
    d->visualizationList->RemoveAll();
}

void ZORTestMainDialog::UpdateDebugVis()
{
    if (d->ui._ShowDebugChk->isChecked())
        d->debugVisualization->Show();
    else
        d->debugVisualization->Hide();
}

void ZORTestMainDialog::RemoveDebugVis()
{
    ZORDebugVizContainer::GetContainer()->RemoveAllObjects();
}

void ZORTestMainDialog::RefreshStackLabels()
{
    d->stackBrowser->RefreshLabels();
}

void ZORTestMainDialog::RefreshStackTraces()
{
    d->stackBrowser->RefreshTraces();
}

void ZORTestMainDialog::RefreshStackTrace()
{
    d->stackBrowser->RefreshText();
}

void ZORTestMainDialog::ClearLabelTraces()
{
    d->stackBrowser->ClearCurrentLabel();
    RefreshStackLabels();
}

void ZORTestMainDialog::ClearAllTraces()
{
    ZORSysStackMonitor::GetStackMonitor()->ClearAllTraces();
    RefreshStackLabels();
}

void ZORTestMainDialog::BeginTransaction() {}

void ZORTestMainDialog::EndTransaction() {}

void ZORTestMainDialog::ShowError(const QString& message)
{
    ZORTestShowErrorBox(this, message);
}
