#include "console/ZORTestGeoInspectionDlg.h"

#include "ui_ZORTestGeoInspectionDlg.h"

#include <ZORGeometry/ZORGeoGeometry.h>

ZORTestGeoInspectionDlg::ZORTestGeoInspectionDlg(QWidget* parent)
    : QDialog(parent)
    , m_ui(std::make_unique<Ui::ZORTestGeoInspectionDlg>())
{
    m_ui->setupUi(this);
    connect(m_ui->_RemRefChk, &QCheckBox::stateChanged, this, &ZORTestGeoInspectionDlg::OnRemRefChange);
    connect(m_ui->_RefCombo, &QComboBox::currentTextChanged, this,
            &ZORTestGeoInspectionDlg::OnRefTraceChange);
}

ZORTestGeoInspectionDlg::~ZORTestGeoInspectionDlg() = default;

void ZORTestGeoInspectionDlg::SetGeometry(ZORGeoGeometry* geometry)
{
    m_geometry = geometry;
}

ZORGeoGeometry* ZORTestGeoInspectionDlg::GetGeometry() const
{
    return m_geometry;
}

void ZORTestGeoInspectionDlg::OnRemRefChange() {}

void ZORTestGeoInspectionDlg::OnRefTraceChange()
{
    m_ui->_RefEdit->setPlainText(m_ui->_RefCombo->currentData().toString());
}
