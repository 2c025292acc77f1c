#include "visualization/ZORTestSurfaceVisOptionsDlg.h"

#include "ui_ZORTestSurfaceVisOptionsDlg.h"

ZORTestSurfaceVisOptionsDlg::ZORTestSurfaceVisOptionsDlg(ZORTestEnvironment* environment)
    : ZORTestVisOptionsDlg(environment)
    , m_ui(std::make_unique<Ui::ZORTestSurfaceVisOptionsDlg>())
{
    m_ui->setupUi(this);
    connect(m_ui->_ColorBtn, &QPushButton::clicked, this, &ZORTestVisOptionsDlg::SelectColor);
    connect(m_ui->_OKBtn, &QPushButton::clicked, this, &ZORTestSurfaceVisOptionsDlg::OnOKClicked);
    connect(m_ui->_CancelBtn, &QPushButton::clicked, this, &QDialog::reject);

    const ZORTestSettingsGroup settings = OpenSettings("Surface");
    SetButtonColor(m_ui->_ColorBtn, settings->value("Color", QColor(127, 127, 127)).value<QColor>());
    m_ui->_WireframeChk->setChecked(settings->value("Wireframe").toBool());
}

ZORTestSurfaceVisOptionsDlg::~ZORTestSurfaceVisOptionsDlg() = default;

ZORVisOptions ZORTestSurfaceVisOptionsDlg::GetOptions() const
{
    ZORVisOptions options;
    options.SetColor(GetButtonColor(m_ui->_ColorBtn));
    return options;
}

bool ZORTestSurfaceVisOptionsDlg::IsWireframe() const
{
    return m_ui->_WireframeChk->isChecked();
}

void ZORTestSurfaceVisOptionsDlg::OnOKClicked()
{
    const ZORTestSettingsGroup settings = OpenSettings("Surface");
    settings->setValue("Color", GetButtonColor(m_ui->_ColorBtn));
    settings->setValue("Wireframe", m_ui->_WireframeChk->isChecked());
    accept();
}
