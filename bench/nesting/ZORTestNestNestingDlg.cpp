#include "nesting/ZORTestNestNestingDlg.h"

#include "core/ZORTestEnvironment.h"
#include "core/ZORTestRegistration.h"
#include "core/ZORTestSettingsGroup.h"
#include "nesting/ZORTestNestNestingResultDlg.h"
#include "ui_ZORTestNestNestingDlg.h"

#include <ZORNesting/ZORNestNestingInput.h>
#include <ZORNesting/ZORNestNestingProcessor.h>
#include <ZORNesting/ZORNestNestingResponse.h>
#include <ZORSystem/ZORSysFile.h>
#include <ZORSystem/ZORSysFileException.h>

#include <QFileDialog>
#include <QFileInfo>
#include <QInputDialog>

#include <cmath>
#include <functional>
#include <limits>
#include <set>

ZOR_TEST_REGISTER(ZORTestNestNestingDlg)

namespace {

constexpr double kDegreesPerRadian = 57.29577951308232;
constexpr double kRadiansPerDegree = 0.017453292519943295;

enum ItemColumn {
    ItemName,
    ItemQuantity,
    ItemMirrored,
    ItemOrientation,
    ItemFlippable,
    ItemGrain90,
    ItemGrain180,
    ItemGrain270,
    ItemMaxDeviation,
    ItemDeviationIncrement,
    ItemPriority,
    ItemFile
};

enum PackagingColumn {
    PackagingName,
    PackagingQuantity,
    PackagingWidth,
    PackagingLength,
    PackagingInfinite,
    PackagingLeftTrim,
    PackagingRightTrim,
    PackagingTopTrim,
    PackagingBottomTrim,
    PackagingCost
};

constexpr QLatin1String kSettingsGroup("ZORTestNestNestingDlg");
constexpr qint64 kMaximumPartSize = qint64(1) << 30; // bytes

/// Typed cells: the editor of a cell goes by its value.
void AppendRow(QTableWidget* table, const QVariantList& values)
{
    const int row = table->rowCount();
    table->insertRow(row);
    for (int column = 0; column < values.size(); ++column) {
        auto* cell = new QTableWidgetItem;
        cell->setData(Qt::EditRole, values[column]);
        table->setItem(row, column, cell);
    }
    table->resizeColumnsToContents();
}

QVariant GetCell(const QTableWidget* table, int row, int column)
{
    const QTableWidgetItem* cell = table->item(row, column);
    return cell ? cell->data(Qt::EditRole) : QVariant();
}

/// Commits and closes the editor of the current cell. Qt keeps a table in its editing state when the edited row vanishes;
/// keys and scripts press a button without a change of the focus, which would end the edit.
void FinishEditing(QTableWidget* table)
{
    // The Enter key commits in a queued call, which must not meet a row that is gone.
    QCoreApplication::sendPostedEvents(table->itemDelegate(), QEvent::MetaCall);
    const int row = table->currentRow();
    const int column = table->currentColumn();
    table->setCurrentCell(row, column == 0 ? 1 : 0, QItemSelectionModel::NoUpdate);
    table->setCurrentCell(row, column, QItemSelectionModel::NoUpdate);
}

void RemoveSelectedRows(QTableWidget* table)
{
    FinishEditing(table);
    std::set<int, std::greater<>> rows;
    const QList<QTableWidgetSelectionRange> ranges = table->selectedRanges();
    for (const QTableWidgetSelectionRange& range : ranges) {
        for (int row = range.topRow(); row <= range.bottomRow(); ++row)
            rows.insert(row);
    }
    for (const int row : rows)
        table->removeRow(row);
}

void WriteSettings(const ZORTestSettingsGroup& settings, const ZORNestNestingInput& input)
{
    settings->setValue("MaterialID", input.GetMaterialID());
    settings->setValue("MaterialThickness", input.GetMaterialThickness());
    settings->setValue("MaxDeviation", input.GetMaxDeviation());
    settings->setValue("DeviationIncrement", input.GetDeviationIncrement());
    settings->setValue("SingleSided", input.IsSingleSidedMaterial());
    settings->setValue("Grain90", input.IsGrain90Set());
    settings->setValue("Grain180", input.IsGrain180Set());
    settings->setValue("Grain270", input.IsGrain270Set());
    settings->setValue("ItemSeparation", input.GetItemSeparation());
    settings->setValue("FrameWidth", input.GetFrameWidth());
    settings->setValue("PackagingUsageRule", int(input.GetPackagingUsageRule()));
    settings->setValue("MaxRunTime", input.GetMaxRunTime());
    settings->setValue("MinRunTime", input.GetMinRunTime());
    settings->setValue("StackSize", input.GetStackSize());
    settings->sync();
}

} // namespace

ZORTestNestNestingDlg::ZORTestNestNestingDlg(ZORTestEnvironment* environment)
    : ZORTestDialog(environment)
    , m_ui(std::make_unique<Ui::ZORTestNestNestingDlg>())
    , m_processor(new ZORNestNestingProcessor(this))
{
    m_ui->setupUi(this);
    m_ui->_ProgBar->setValue(0);
    m_ui->_ItemTable->resizeColumnsToContents();
    m_ui->_PackagingTable->resizeColumnsToContents();
    QPushButton* cancelButton = m_ui->_ButtonBox->button(QDialogButtonBox::Cancel);
    cancelButton->setAutoDefault(false); // Return in a field must not give up a run

    Connect(m_ui->_AddItemBtn, &ZORTestNestNestingDlg::OnAddItemClicked);
    Connect(m_ui->_RemoveItemBtn, &ZORTestNestNestingDlg::OnRemoveItemClicked);
    Connect(m_ui->_PackagingAddBtn, &ZORTestNestNestingDlg::OnAddPacakgeClicked);
    Connect(m_ui->_PackagingRemoveBtn, &ZORTestNestNestingDlg::OnRemovePackageClicked);
    Connect(m_ui->_ComputeBtn, &ZORTestNestNestingDlg::OnComputeClicked);
    Connect(m_ui->_StopBtn, &ZORTestNestNestingDlg::OnStopClicked);
    Connect(cancelButton, &ZORTestNestNestingDlg::OnCancelClicked);
    ReadSettings();
}

ZORTestNestNestingDlg::~ZORTestNestNestingDlg() = default;

bool ZORTestNestNestingDlg::Apply()
{
    return true;
}

/// Connects a button to a slot whose exceptions are shown: nobody above the event loop would.
void ZORTestNestNestingDlg::Connect(const QAbstractButton* button, void (ZORTestNestNestingDlg::*slot)())
{
    connect(button, &QAbstractButton::clicked, this, [this, slot] {
        try {
            (this->*slot)();
        } catch (const ZORSysException& exception) {
            ShowError(exception.GetMessage());
        }
    });
}

void ZORTestNestNestingDlg::ReadSettings()
{
    const ZORTestSettingsGroup settings(GetEnvironment()->GetSettings(), kSettingsGroup);
    const auto read = [&settings](const char* key, const auto& apply) {
        if (settings->contains(QLatin1String(key)))
            apply(settings->value(QLatin1String(key)));
    };
    const auto readNumber = [&read](const char* key, QDoubleSpinBox* spinBox, double factor = 1) {
        read(key, [=](const QVariant& value) { spinBox->setValue(value.toDouble() * factor); });
    };
    const auto readFlag = [&read](const char* key, QCheckBox* checkBox) {
        read(key, [=](const QVariant& value) { checkBox->setChecked(value.toBool()); });
    };
    read("MaterialID", [this](const QVariant& value) { m_ui->_IDEdit->setText(value.toString()); });
    readNumber("MaterialThickness", m_ui->_ThicknessSpn);
    readNumber("MaxDeviation", m_ui->_MaxDevSpn, kDegreesPerRadian);
    readNumber("DeviationIncrement", m_ui->_DevIncSpn, kDegreesPerRadian);
    readFlag("SingleSided", m_ui->_SingleSidedChk);
    readFlag("Grain90", m_ui->_Grain90Chk);
    readFlag("Grain180", m_ui->_Grain180Chk);
    readFlag("Grain270", m_ui->_Grain270Chk);
    readNumber("ItemSeparation", m_ui->_ItemSeparationSpn);
    readNumber("FrameWidth", m_ui->_FrameWidthSpn);
    read("PackagingUsageRule", [this](const QVariant& value) {
        const int index = value.toInt();
        if (index >= 0 && index < m_ui->_PackagingRuleCombo->count())
            m_ui->_PackagingRuleCombo->setCurrentIndex(index);
    });
    readNumber("MaxRunTime", m_ui->_MaxRunTimeSpn);
    readNumber("MinRunTime", m_ui->_MinRunTimeSpn);
    read("StackSize", [this](const QVariant& value) { m_ui->_StackSizeSpn->setValue(value.toInt()); });
}

void ZORTestNestNestingDlg::OnAddItemClicked()
{
    const QStringList paths = QFileDialog::getOpenFileNames(this, tr("Select MSI files"));
    for (const QString& path : paths) {
        ZORSysFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            throw ZORSysFileOpenException(path, file.errorString());
        if (file.size() > kMaximumPartSize)
            throw ZORSysFileOpenException(path, tr("it is larger than 1 GB"));
        const QByteArray content = file.readAll();
        if (const QString error = file.GetReadError(); !error.isEmpty())
            throw ZORSysFileOpenException(path, error);
        AppendItem(ZORNestNestingInputItem(QFileInfo(path).baseName(), content), path);
    }
}

void ZORTestNestNestingDlg::AppendItem(const ZORNestNestingInputItem& item, const QString& path)
{
    AppendRow(m_ui->_ItemTable,
              {item.GetName(), item.GetQuantity(), item.IsMirrored(),
               item.GetOrientation() * kDegreesPerRadian, item.IsFlippable(), item.IsGrain90Set(),
               item.IsGrain180Set(), item.IsGrain270Set(), item.GetMaxDeviation() * kDegreesPerRadian,
               item.GetDeviationIncrement() * kDegreesPerRadian, item.GetPriority(), path});
}

void ZORTestNestNestingDlg::OnRemoveItemClicked()
{
    RemoveSelectedRows(m_ui->_ItemTable);
}

void ZORTestNestNestingDlg::OnAddPacakgeClicked()
{
    // Without result flags: what a cancelled query gives is taken.
    const double width = QInputDialog::getDouble(this, tr("Width"), tr("Width"));
    const QString name = QInputDialog::getText(this, tr("Name"), tr("Name"));
    AppendPackaging(ZORNestNestingInputPackaging(name, width, std::numeric_limits<double>::quiet_NaN()));
}

void ZORTestNestNestingDlg::AppendPackaging(const ZORNestNestingInputPackaging& packaging)
{
    const double length = packaging.GetLength();
    const bool isInfinite = std::isnan(length);
    AppendRow(m_ui->_PackagingTable,
              {packaging.GetName(), packaging.GetQuantity(), packaging.GetWidth(),
               isInfinite ? QVariant(QLatin1String("inf")) : QVariant(length), isInfinite,
               packaging.GetLeftTrim(), packaging.GetRightTrim(), packaging.GetTopTrim(),
               packaging.GetBottomTrim(), packaging.GetCost()});
}

void ZORTestNestNestingDlg::OnRemovePackageClicked()
{
    RemoveSelectedRows(m_ui->_PackagingTable);
}

ZORNestNestingInputItem ZORTestNestNestingDlg::GetItem(int row) const
{
    const auto cell = [this, row](ItemColumn column) { return GetCell(m_ui->_ItemTable, row, column); };
    const QString path = cell(ItemFile).toString();
    ZORSysFile file(path);
    if (!file.open(QIODevice::ReadOnly) || file.size() > kMaximumPartSize)
        throw ZORSysException(tr("can't open file"));
    const QByteArray content = file.readAll();
    if (!file.GetReadError().isEmpty())
        throw ZORSysException(tr("can't open file"));
    ZORNestNestingInputItem item(cell(ItemName).toString(), content);
    item.SetQuantity(cell(ItemQuantity).toInt());
    item.SetMirrored(cell(ItemMirrored).toBool());
    item.SetOrientation(cell(ItemOrientation).toDouble() * kRadiansPerDegree);
    item.SetFlippable(cell(ItemFlippable).toBool());
    item.SetGrain90(cell(ItemGrain90).toBool());
    item.SetGrain180(cell(ItemGrain180).toBool());
    item.SetGrain270(cell(ItemGrain270).toBool());
    item.SetMaxDeviation(cell(ItemMaxDeviation).toDouble() * kRadiansPerDegree);
    // Items have no increment to be set: the column overrides the deviation. This is established behaviour.
    item.SetMaxDeviation(cell(ItemDeviationIncrement).toDouble() * kRadiansPerDegree);
    item.SetPriority(cell(ItemPriority).toInt());
    return item;
}

ZORNestNestingInputPackaging ZORTestNestNestingDlg::GetPackaging(int row) const
{
    const auto cell = [this, row](PackagingColumn column) {
        return GetCell(m_ui->_PackagingTable, row, column);
    };
    const double length = cell(PackagingInfinite).toBool() ? std::numeric_limits<double>::quiet_NaN()
                                                           : cell(PackagingLength).toDouble();
    ZORNestNestingInputPackaging packaging(cell(PackagingName).toString(), cell(PackagingWidth).toDouble(),
                                           length);
    packaging.SetQuantity(cell(PackagingQuantity).toInt());
    packaging.SetLeftTrim(cell(PackagingLeftTrim).toDouble());
    packaging.SetRightTrim(cell(PackagingRightTrim).toDouble());
    packaging.SetTopTrim(cell(PackagingTopTrim).toDouble());
    packaging.SetBottomTrim(cell(PackagingBottomTrim).toDouble());
    packaging.SetCost(cell(PackagingCost).toDouble());
    return packaging;
}

/// Items and packagings with the material and the parameters of the form.
ZORNestNestingInput
ZORTestNestNestingDlg::GetInput(const QList<ZORNestNestingInputItem>& items,
                                const QList<ZORNestNestingInputPackaging>& packagings) const
{
    ZORNestNestingInput input(m_ui->_IDEdit->text(), m_ui->_ThicknessSpn->value(), items, packagings);
    input.SetMaxDeviation(m_ui->_MaxDevSpn->value() * kRadiansPerDegree);
    input.SetDeviationIncrement(m_ui->_DevIncSpn->value() * kRadiansPerDegree);
    input.SetSingleSidedMaterial(m_ui->_SingleSidedChk->isChecked());
    input.SetGrain90(m_ui->_Grain90Chk->isChecked());
    input.SetGrain180(m_ui->_Grain180Chk->isChecked());
    input.SetGrain270(m_ui->_Grain270Chk->isChecked());
    input.SetItemSeparation(m_ui->_ItemSeparationSpn->value());
    input.SetFrameWidth(m_ui->_FrameWidthSpn->value());
    input.SetPackagingUsageRule(
        ZORNestBaseFeature::PackagingUsageRule(m_ui->_PackagingRuleCombo->currentIndex()));
    input.SetMaxRunTime(m_ui->_MaxRunTimeSpn->value());
    input.SetMinRunTime(m_ui->_MinRunTimeSpn->value());
    input.SetStackSize(m_ui->_StackSizeSpn->value());
    return input;
}

/// The job of the form, its parameters written to the settings.
ZORNestNestingInput ZORTestNestNestingDlg::GetRememberedInput() const
{
    QList<ZORNestNestingInputItem> items;
    for (int row = 0; row < m_ui->_ItemTable->rowCount(); ++row)
        items.append(GetItem(row));
    QList<ZORNestNestingInputPackaging> packagings;
    for (int row = 0; row < m_ui->_PackagingTable->rowCount(); ++row)
        packagings.append(GetPackaging(row));

    const ZORTestSettingsGroup settings(GetEnvironment()->GetSettings(), kSettingsGroup);
    const ZORNestNestingInput input = GetInput(items, packagings);
    WriteSettings(settings, input);
    return input;
}

void ZORTestNestNestingDlg::OnComputeClicked()
{
    const ZORNestNestingResponse* response = m_processor->AddInput(GetRememberedInput());
    connect(response, &ZORNestNestingResponse::ProgressChanged, this,
            &ZORTestNestNestingDlg::OnProgressUpdate);
    connect(response, &ZORNestNestingResponse::StatusChanged, this, &ZORTestNestNestingDlg::OnStatusChange);
    m_processor->Execute(nullptr);
}

void ZORTestNestNestingDlg::OnStopClicked()
{
    m_processor->Stop(nullptr);
}

void ZORTestNestNestingDlg::OnCancelClicked()
{
    m_processor->Cancel(nullptr);
}

void ZORTestNestNestingDlg::OnProgressUpdate(double ratio)
{
    constexpr double kTiniest = 0.001;
    if (!(ratio >= kTiniest)) {
        m_ui->_ProgBar->setValue(m_ui->_ProgBar->maximum());
    } else {
        m_ui->_ProgBar->setMaximum(100);
        m_ui->_ProgBar->setValue(int(ratio * 100));
    }
}

void ZORTestNestNestingDlg::OnStatusChange()
{
    const auto* response = qobject_cast<ZORNestNestingResponse*>(sender());
    if (!response || response->GetStatus() != ZORNestNestingResponse::Completed)
        return;

    auto* results = new ZORTestNestNestingResultDlg(this, GetEnvironment());
    results->SetData(response->GetReportFile(), response->GetSheetFiles());
    results->show();
}
