#include "nesting/ZORTestNestTranslateDlg.h"

#include "core/ZORTestRegistration.h"
#include "ui_ZORTestNestTranslateDlg.h"

#include <ZORNesting/ZORNestSourceProvider.h>
#include <ZORNesting/ZORNestTranslationInput.h>
#include <ZORNesting/ZORNestTranslationProcessor.h>
#include <ZORWorker/ZORWorkResource.h>
#include <ZORWorker/ZORWorkResponse.h>

#include <QFile>
#include <QFileDialog>
#include <QMessageBox>

ZOR_TEST_REGISTER(ZORTestNestTranslateDlg)

ZORTestNestTranslateDlg::ZORTestNestTranslateDlg(ZORTestEnvironment* environment)
    : ZORTestDialog(environment)
    , m_ui(std::make_unique<Ui::ZORTestNestTranslateDlg>())
    , m_processor(std::make_unique<ZORNestTranslationProcessor>())
{
    m_ui->setupUi(this);
    for (const ZORNestSourceProvider* provider : ZORNestSourceProvider::GetProviders())
        m_ui->_ProviderCombo->addItem(provider->GetDisplayName(), provider->GetProviderId());
    connect(m_ui->_AddBtn, &QPushButton::clicked, this, &ZORTestNestTranslateDlg::OnAddClicked);
    connect(m_ui->_RemoveBtn, &QPushButton::clicked, this, &ZORTestNestTranslateDlg::OnRemoveClicked);
    connect(m_ui->_TranslateBtn, &QPushButton::clicked, this, &ZORTestNestTranslateDlg::OnTranslateClicked);
}

ZORTestNestTranslateDlg::~ZORTestNestTranslateDlg() = default;

bool ZORTestNestTranslateDlg::Apply()
{
    return true;
}

void ZORTestNestTranslateDlg::OnAddClicked()
{
    m_ui->_FileList->addItems(QFileDialog::getOpenFileNames(this, tr("Select Input File")));
}

void ZORTestNestTranslateDlg::OnRemoveClicked()
{
    qDeleteAll(m_ui->_FileList->selectedItems());
}

void ZORTestNestTranslateDlg::OnTranslateClicked()
{
    const QString directory = QFileDialog::getExistingDirectory(this);
    // What an earlier batch still translates goes where it was meant to go.
    if (directory.isEmpty())
        return;
    m_outputDirectory = directory;

    // Those of an earlier batch are connected already.
    m_responses.clear();
    for (int row = 0; row < m_ui->_FileList->count(); ++row) {
        ZORNestTranslationInput input;
        input.SetInputFileType(ZORNestTranslationInput::ProviderSource);
        input.SetOutputFileType(ZORNestTranslationInput::PartFile);
        input.SetPreTranslateProvider(m_ui->_ProviderCombo->currentData().toByteArray());
        m_responses.append(m_processor->AddInput(input, ZORWorkResource(m_ui->_FileList->item(row)->text())));
    }
    for (const ZORNestTranslationResponse* response : std::as_const(m_responses)) {
        connect(response->GetWorkResponse(), &ZORWorkResponse::StatusChanged, this,
                &ZORTestNestTranslateDlg::OnStatusUpdated);
    }
    m_ui->_ProgBar->setMaximum(int(m_responses.size()));
    m_ui->_ProgBar->setValue(0);
    m_processor->Execute();
}

void ZORTestNestTranslateDlg::OnStatusUpdated()
{
    const auto* response = qobject_cast<ZORWorkResponse*>(sender());
    if (!response
        || (response->GetStatus() != ZORWorkResponse::Finished
            && response->GetStatus() != ZORWorkResponse::Failed))
        return;

    const QList<ZORWorkResource> resources = response->GetResult().GetResources();
    for (const ZORWorkResource& resource : resources) {
        const QString path = resource.GetFilePath();
        resource.ConvertToLocalStorage(m_outputDirectory, ZORWorkResource::Copy);
        QFile::remove(path);
    }
    m_ui->_ProgBar->setValue(m_ui->_ProgBar->value() + 1);
    if (m_ui->_ProgBar->value() == m_ui->_ProgBar->maximum())
        QMessageBox::information(this, tr("Finished"), tr("Translation has finished"));
}
