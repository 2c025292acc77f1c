#include "window/ZORHostViewTools.h"

#include "actions/ZORHostSelectionFilterCombo.h"
#include "objects/ZORHostObjectSet.h"
#include "view/ZORHostHighlights.h"
#include "view/ZORHostPickTool.h"
#include "view/ZORHostSelectTool.h"
#include "view/ZORHostSelection.h"
#include "view/ZORHostView3D.h"

#include <ZORCommand/ZORCmdController.h>
#include <ZORGeometry/ZORGeoGeometry.h>

#include <QAction>
#include <QStatusBar>
#include <QToolBar>

ZORHostViewTools::ZORHostViewTools(ZORHostView3D* view, ZORHostSelection* selection, QToolBar* toolBar,
                                   QStatusBar* statusBar, QObject* parent)
    : QObject(parent)
    , m_pickTool(std::make_unique<ZORHostPickTool>(view, selection, nullptr))
{
    auto* const tool = new ZORHostSelectTool(view, selection, this);
    connect(tool, &ZORHostSelectTool::Picked, statusBar,
            [statusBar](QObject*, const QString& name, const ZORMathPoint& point) {
                statusBar->showMessage(tr("%1 at %2 mm").arg(name, point.ToString('f', 3)));
            });
    connect(tool, &ZORHostSelectTool::PickCleared, statusBar, &QStatusBar::clearMessage);
    connect(tool, &ZORHostSelectTool::Activated, this, &ZORHostViewTools::Activated);
    const auto drawnOf = [](const QList<ZORGeoGeometry*>& objects) { return ZORHostDrawnObjects(objects); };
    new ZORHostHighlights(view, selection, drawnOf, this);
    ZORCmdController::GetController()->SetPickAnswerer(m_pickTool.get());
    auto* const filter = new ZORHostSelectionFilterCombo(selection, toolBar);
    QAction* const filterAction = toolBar->addWidget(filter);
    filterAction->setText(filter->accessibleName());
    filterAction->setStatusTip(filter->statusTip());
}

ZORHostViewTools::~ZORHostViewTools() = default;
