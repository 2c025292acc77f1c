#include "operations/ZORTestStrategyDlg.h"

#include "core/ZORTestEnvironment.h"
#include "core/ZORTestRegistration.h"
#include "core/ZORTestSettingsGroup.h"
#include "widgets/ZORTestForm.h"
#include "widgets/ZORTestStrategySelector.h"

#include <ZORComposites/ZORCompStrategy.h>

ZOR_TEST_REGISTER(ZORTestStrategyDlg)

ZORTestStrategyDlg::ZORTestStrategyDlg(ZORTestEnvironment* environment)
    : ZORTestDialog(environment)
{
    ZORTestForm form(this);
    form.SetTitle(tr("Using Strategy Selector"));
    m_strategySel = form.AddStrategySelector("_StrategySel", tr("Strategy: "));
    form.AddButtonBox();
    m_strategySel->SetEnvironment(environment);
}

bool ZORTestStrategyDlg::Apply()
{
    // The test entry of the selector is no object that a cast could look at.
    ZORCompStrategy* const selected = m_strategySel->GetSelectedStrategy();
    if (ZORTestStrategySelector::IsTestHandle(selected) || !qobject_cast<ZORCompStrategy*>(selected))
        return Fail(tr("Strategy selection invalid"));

    const ZORTestSettingsGroup settings(GetEnvironment()->GetSettings(), QLatin1String("Strategy"));
    const QLatin1String key("something");
    settings->setValue(key, settings->value(key).toString());
    return true;
}
