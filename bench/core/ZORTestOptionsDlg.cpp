#include "core/ZORTestOptionsDlg.h"

#include "ui_ZORTestOptionsDlg.h"

#include <ZORGeometry/ZORGeoDebugOptions.h>
#include <ZORNesting/ZORNestDebugOptions.h>

#include <QFileDialog>

ZORTestOptionsDlg::ZORTestOptionsDlg(QWidget* parent)
    : QDialog(parent)
    , m_ui(std::make_unique<Ui::ZORTestOptionsDlg>())
{
    m_ui->setupUi(this);

    const auto* geometry = ZORGeoDebugOptions::GetInstance();
    m_ui->_GeoConstStackChk->setChecked(geometry->IsConstructorStackTraces());
    m_ui->_GeoConstLenSpn->setValue(geometry->GetConstructorStackTraceLength());
    m_ui->_GeoRefStackChk->setChecked(geometry->IsReferenceStackTraces());
    m_ui->_GeoRefLenSpn->setValue(geometry->GetReferenceStackTraceLength());
    m_ui->_DumpContainerLoadChk->setChecked(geometry->IsContainerLoadDumpEnabled());
    m_ui->_ContainerDumpEdit->setText(geometry->GetContainerLoadDumpFile());

    const auto* nesting = ZORNestDebugOptions::GetInstance();
    m_ui->_KeepTransChk->setChecked(nesting->GetKeepTranslationWorkDirectories());
    m_ui->_KeepNestingChk->setChecked(nesting->GetKeepNestingWorkDirectories());
}

ZORTestOptionsDlg::~ZORTestOptionsDlg() = default;

void ZORTestOptionsDlg::OnOkClicked()
{
    auto* geometry = ZORGeoDebugOptions::GetInstance();
    geometry->SetConstructorStackTraces(m_ui->_GeoConstStackChk->isChecked());
    geometry->SetConstructorStackTraceLength(m_ui->_GeoConstLenSpn->value());
    geometry->SetReferenceStackTraces(m_ui->_GeoRefStackChk->isChecked());
    geometry->SetReferenceStackTraceLength(m_ui->_GeoRefLenSpn->value());
    geometry->SetContainerLoadDumpEnabled(m_ui->_DumpContainerLoadChk->isChecked());
    geometry->SetContainerLoadDumpFile(m_ui->_ContainerDumpEdit->text());

    auto* nesting = ZORNestDebugOptions::GetInstance();
    nesting->SetKeepTranslationWorkDirectories(m_ui->_KeepTransChk->isChecked());
    nesting->SetKeepNestingWorkDirectories(m_ui->_KeepNestingChk->isChecked());

    close();
}

void ZORTestOptionsDlg::OnContainerDumpFileClicked()
{
    m_ui->_ContainerDumpEdit->setText(QFileDialog::getSaveFileName(this, tr("Select dump file")));
}
