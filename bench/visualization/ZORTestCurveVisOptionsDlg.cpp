#include "visualization/ZORTestCurveVisOptionsDlg.h"

#include "ui_ZORTestCurveVisOptionsDlg.h"

ZORTestCurveVisOptionsDlg::ZORTestCurveVisOptionsDlg(ZORTestEnvironment* environment)
    : ZORTestVisOptionsDlg(environment)
    , m_ui(std::make_unique<Ui::ZORTestCurveVisOptionsDlg>())
{
    m_ui->setupUi(this);
    connect(m_ui->_ColorBtn, &QPushButton::clicked, this, &ZORTestVisOptionsDlg::SelectColor);
    connect(m_ui->_OKBtn, &QPushButton::clicked, this, &ZORTestCurveVisOptionsDlg::OnOKClicked);
    connect(m_ui->_CancelBtn, &QPushButton::clicked, this, &QDialog::reject);

    // The codes of two pairs are crossed against the order of the list: this is established.
    m_ui->_StyleCmb->addItem(tr("solid"), 0);
    m_ui->_StyleCmb->addItem(tr("dash"), 1);
    m_ui->_StyleCmb->addItem(tr("dot"), 2);
    m_ui->_StyleCmb->addItem(tr("chain"), 4);
    m_ui->_StyleCmb->addItem(tr("1 dash 1 dot"), 3);
    m_ui->_StyleCmb->addItem(tr("1 dash 2 dot"), 5);
    m_ui->_StyleCmb->addItem(tr("1 dash 3 dot"), 6);
    m_ui->_StyleCmb->addItem(tr("2 dash chain"), 8);
    m_ui->_StyleCmb->addItem(tr("2 dash 2 dot"), 7);
    m_ui->_StyleCmb->addItem(tr("2 dash 3 dot"), 9);
    m_ui->_StyleCmb->addItem(tr("long dash dot"), 10);
    m_ui->_StyleCmb->addItem(tr("long dash 2 dot"), 11);
    m_ui->_StyleCmb->addItem(tr("long dash 3 dot"), 12);
    for (int width = 1; width <= 8; ++width)
        m_ui->_WidthCmb->addItem(QString::number(width), width);

    const ZORTestSettingsGroup settings = OpenSettings("Curve");
    m_ui->_StyleCmb->setCurrentIndex(settings->value("Style", 0).toInt());
    m_ui->_WidthCmb->setCurrentIndex(settings->value("Width", 1).toInt());
    const bool lines = settings->value("Lines", true).toBool();
    m_ui->_LinesRadio->setChecked(lines);
    m_ui->_PointsRadio->setChecked(!lines);
    m_ui->_PointIdxChk->setChecked(settings->value("PointIdx", false).toBool());
    SetButtonColor(m_ui->_ColorBtn, settings->value("Color", QColor(255, 255, 255)).value<QColor>());
}

ZORTestCurveVisOptionsDlg::~ZORTestCurveVisOptionsDlg() = default;

ZORVisOptions ZORTestCurveVisOptionsDlg::GetOptions() const
{
    ZORVisOptions options;
    options.SetColor(GetButtonColor(m_ui->_ColorBtn));
    options.SetLineThickness(m_ui->_WidthCmb->currentData().toDouble());
    options.SetLineStyle(static_cast<ZORVisOptions::LineStyle>(m_ui->_StyleCmb->currentData().toInt()));
    return options;
}

bool ZORTestCurveVisOptionsDlg::IsDrawLines() const
{
    return m_ui->_LinesRadio->isChecked();
}

bool ZORTestCurveVisOptionsDlg::IsShowPointIndexes() const
{
    return m_ui->_PointIdxChk->isChecked();
}

void ZORTestCurveVisOptionsDlg::OnOKClicked()
{
    const ZORTestSettingsGroup settings = OpenSettings("Curve");
    settings->setValue("Style", m_ui->_StyleCmb->currentIndex());
    settings->setValue("Width", m_ui->_WidthCmb->currentIndex());
    settings->setValue("Lines", m_ui->_LinesRadio->isChecked());
    settings->setValue("PointIdx", m_ui->_PointIdxChk->isChecked());
    settings->setValue("Color", GetButtonColor(m_ui->_ColorBtn));
    accept();
}
