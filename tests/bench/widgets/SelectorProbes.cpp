#include "SelectorProbes.h"

#include "core/ZORTestEnvironment.h"
#include "core/ZORTestRegistration.h"
#include "widgets/ZORTestForm.h"

#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatEnvironment.h>
#include <ZORGeometry/ZORGeoCartesianPoint.h>
#include <ZORMathematics/ZORMathPoint.h>
#include <ZORSystem/ZORSysException.h>

ZOR_TEST_REGISTER(ProbePointCmd)
ZOR_TEST_REGISTER(ProbeFailingCmd)
ZOR_TEST_REGISTER(ProbeTwinACmd)
ZOR_TEST_REGISTER(ProbeTwinBCmd)
ZOR_TEST_REGISTER(ProbeCurveBodyCmd)
ZOR_TEST_REGISTER(ProbeAnyBodyCmd)
ZOR_TEST_REGISTER(ProbePointDlg)
ZOR_TEST_REGISTER(ProbeSelectionDlg)

QStringList ProbePointCmd::executed;

namespace {

void AddProbePoint(ZORTestEnvironment* environment)
{
    (new ZORGeoCartesianPoint(environment->GetEnvironment()->GetContainer(), ZORMathPoint(1, 2, 3)))
        ->Initialize();
}

void Note(const ZORTestCommand* command)
{
    ProbePointCmd::executed.append(QLatin1String(command->metaObject()->className()));
}

} // namespace

ProbePointCmd::ProbePointCmd(ZORTestEnvironment* environment)
    : ZORTestCommand(environment)
{
}

void ProbePointCmd::Execute()
{
    Note(this);
    AddProbePoint(GetEnvironment());
    emit Finished(true);
}

ProbeFailingCmd::ProbeFailingCmd(ZORTestEnvironment* environment)
    : ZORTestCommand(environment)
{
}

void ProbeFailingCmd::Execute()
{
    Note(this);
    throw ZORSysException(QStringLiteral("the probe failed"));
}

ProbeTwinACmd::ProbeTwinACmd(ZORTestEnvironment* environment)
    : ZORTestCommand(environment)
{
}

void ProbeTwinACmd::Execute()
{
    Note(this);
}

ProbeTwinBCmd::ProbeTwinBCmd(ZORTestEnvironment* environment)
    : ZORTestCommand(environment)
{
}

void ProbeTwinBCmd::Execute()
{
    Note(this);
}

ProbeCurveBodyCmd::ProbeCurveBodyCmd(ZORTestEnvironment* environment)
    : ZORTestCommand(environment)
{
}

void ProbeCurveBodyCmd::Execute()
{
    Note(this);
}

ProbeAnyBodyCmd::ProbeAnyBodyCmd(ZORTestEnvironment* environment)
    : ZORTestCommand(environment)
{
}

void ProbeAnyBodyCmd::Execute()
{
    Note(this);
}

ProbePointDlg::ProbePointDlg(ZORTestEnvironment* environment)
    : ZORTestDialog(environment)
{
    ZORTestForm form(this);
    form.AddButtonBox();
}

bool ProbePointDlg::Apply()
{
    AddProbePoint(GetEnvironment());
    return true;
}

ProbeSelectionDlg::ProbeSelectionDlg(ZORTestEnvironment* environment)
    : ZORTestDialog(environment)
{
    ZORTestForm form(this);
    form.AddSelector("_PointSel", tr("Point: "), "ZORGeoPoint");
    form.AddButtonBox();
}

bool ProbeSelectionDlg::Apply()
{
    return true;
}
