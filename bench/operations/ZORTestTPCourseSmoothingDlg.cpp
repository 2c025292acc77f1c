#include "operations/ZORTestTPCourseSmoothingDlg.h"

#include "core/ZORTestRegistration.h"
#include "widgets/ZORTestForm.h"
#include "widgets/ZORTestGeometrySelector.h"

#include <ZORCommonUI/ZORCmnUnitSpinBox.h>
#include <ZORToolPath/ZORTPCourse.h>

ZOR_TEST_REGISTER(ZORTestTPCourseSmoothingDlg)

ZORTestTPCourseSmoothingDlg::ZORTestTPCourseSmoothingDlg(ZORTestEnvironment* environment)
    : ZORTestDialog(environment)
{
    ZORTestForm form(this);
    form.SetTitle(tr("Course Smoothing"));
    m_courseSel = form.AddSelector("_CourseSel", tr("Course"), "ZORTPCourse");
    m_radiusSpin = form.AddUnitSpinBox("_RadiusSpin", tr("Radius: "), "Length");
    form.AddButtonBox();
}

bool ZORTestTPCourseSmoothingDlg::Apply()
{
    auto* course = Require<ZORTPCourse>(m_courseSel, tr("Selection of course was invalid"));
    if (!course)
        return false;

    course->Smooth(m_radiusSpin->GetInternalValue());
    return true;
}
