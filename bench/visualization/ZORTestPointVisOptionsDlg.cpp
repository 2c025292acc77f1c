#include "visualization/ZORTestPointVisOptionsDlg.h"

#include "ui_ZORTestPointVisOptionsDlg.h"

ZORTestPointVisOptionsDlg::ZORTestPointVisOptionsDlg(ZORTestEnvironment* environment)
    : ZORTestVisOptionsDlg(environment)
    , m_ui(std::make_unique<Ui::ZORTestPointVisOptionsDlg>())
{
    m_ui->setupUi(this);
    connect(m_ui->_ColorBtn, &QPushButton::clicked, this, &ZORTestVisOptionsDlg::SelectColor);
    connect(m_ui->_OKBtn, &QPushButton::clicked, this, &ZORTestPointVisOptionsDlg::OnOKClicked);
    connect(m_ui->_CancelBtn, &QPushButton::clicked, this, &QDialog::reject);

    // The index of an entry is the code of its symbol.
    m_ui->_SymbolCmb->addItems({tr("cross"), tr("plus"), tr("concentric"), tr("coincident"),
                                tr("full-circle"), tr("full-square"), tr("star"), tr("nesting-dot"),
                                tr("small-dot"), tr("full-circle2"), tr("full-square2")});

    const ZORTestSettingsGroup settings = OpenSettings("Point");
    SetButtonColor(m_ui->_ColorBtn, settings->value("Color", QColor(127, 127, 127)).value<QColor>());
    m_ui->_SymbolCmb->setCurrentIndex(settings->value("Symbol").toInt());
}

ZORTestPointVisOptionsDlg::~ZORTestPointVisOptionsDlg() = default;

ZORVisOptions ZORTestPointVisOptionsDlg::GetOptions() const
{
    ZORVisOptions options;
    options.SetColor(GetButtonColor(m_ui->_ColorBtn));
    options.SetPointSymbol(static_cast<ZORVisOptions::PointSymbol>(m_ui->_SymbolCmb->currentIndex()));
    return options;
}

void ZORTestPointVisOptionsDlg::OnOKClicked()
{
    const ZORTestSettingsGroup settings = OpenSettings("Point");
    settings->setValue("Color", GetButtonColor(m_ui->_ColorBtn));
    settings->setValue("Symbol", m_ui->_SymbolCmb->currentIndex());
    accept();
}
