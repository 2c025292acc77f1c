#include "nesting/ZORTestNestNestingResultDlg.h"

#include "core/ZORTestEnvironment.h"
#include "nesting/ZORTestReportView.h"
#include "ui_ZORTestNestNestingResultDlg.h"

#include <ZORFeature/ZORFeatEnvironment.h>
#include <ZORNesting/ZORNestResultReader.h>
#include <ZORNesting/ZORNestVisOptions.h>
#include <ZORNesting/ZORNestVisRepFactory.h>
#include <ZORVisualization/ZORVisRep.h>
#include <ZORVisualization/ZORVisVirtualObject.h>

#include <QBuffer>

ZORTestNestNestingResultDlg::ZORTestNestNestingResultDlg(QWidget*, ZORTestEnvironment* environment)
    : QDialog(nullptr)
    , m_ui(std::make_unique<Ui::ZORTestNestNestingResultDlg>())
    , m_object(new ZORVisVirtualObject(environment->GetEnvironment(), nullptr))
{
    setAttribute(Qt::WA_DeleteOnClose);
    m_ui->setupUi(this);
    m_report = new ZORTestReportView(m_ui->_ReportEdit);
    if (ZORVisEnvironment* view = environment->GetEnvironment())
        view->AddVirtualObject(m_object);
    connect(m_ui->_SheetCombo, &QComboBox::currentTextChanged, this,
            &ZORTestNestNestingResultDlg::OnSheetSelected);
}

ZORTestNestNestingResultDlg::~ZORTestNestNestingResultDlg()
{
    delete m_object;
}

void ZORTestNestNestingResultDlg::SetData(const QByteArray& report, const QList<QByteArray>& sheetFiles)
{
    m_report->SetReport(QString::fromUtf8(report));

    m_results.clear();
    m_ui->_SheetCombo->clear();
    for (qsizetype i = 0; i < sheetFiles.size(); ++i) {
        QBuffer buffer;
        buffer.setData(sheetFiles[i]);
        buffer.open(QIODevice::ReadOnly);
        // Before its entry: the first entry is chosen as soon as it is there.
        m_results.append(ZORNestResultReader(&buffer).Read(nullptr));
        m_ui->_SheetCombo->addItem(QString::number(i));
    }
    OnSheetSelected();
}

void ZORTestNestNestingResultDlg::OnSheetSelected()
{
    if (!m_object)
        return;
    const int index = m_ui->_SheetCombo->currentIndex();
    if (index < 0 || index >= m_results.size()) {
        m_object->SetRep(nullptr);
        return;
    }
    ZORNestVisOptions options;
    options.SetFilters(ZORNestVisOptions::allFilters);
    m_object->SetRep(ZORNestVisRepFactory::CreateRep(m_results[index], options));
}
