#include "window/ZORHostAboutDialog.h"

#include "plugins/ZORHostPluginManager.h"

#include <ZORVisualization/ZORVisGraphicsContext.h>

#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QFile>
#include <QFormLayout>
#include <QIcon>
#include <QLabel>
#include <QPlainTextEdit>
#include <QTabWidget>
#include <QVBoxLayout>

namespace {

QString ReadResource(const QString& name)
{
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QLabel* AddRow(QFormLayout* form, const QString& caption, const QString& text, const QString& objectName)
{
    auto* label = new QLabel(text);
    label->setObjectName(objectName);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    form->addRow(caption, label);
    return label;
}

} // namespace

ZORHostAboutDialog::ZORHostAboutDialog(const ZORHostPluginManager& plugins, QWidget* parent)
    : QDialog(parent)
{
    setObjectName("_AboutDialog");
    setWindowTitle(tr("About Zorvane Host"));
    resize(700, 480);
    auto* column = new QVBoxLayout(this);

    auto* head = new QHBoxLayout;
    auto* icon = new QLabel(this);
    icon->setPixmap(QIcon(":/host/icons/zorhost.svg").pixmap(QSize(64, 64), devicePixelRatioF()));
    head->addWidget(icon);
    auto* title = new QLabel(tr("Zorvane Host"), this);
    QFont font = title->font();
    font.setPointSizeF(font.pointSizeF() * 1.6);
    font.setBold(true);
    title->setFont(font);
    head->addWidget(title, 1);
    column->addLayout(head);

    auto* tabs = new QTabWidget(this);
    tabs->setObjectName("_AboutTabs");
    column->addWidget(tabs);
    auto* versions = new QWidget(tabs);
    auto* form = new QFormLayout(versions);
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    AddRow(form, tr("Host:"), QCoreApplication::applicationVersion(), "_AboutHostLbl");
    AddRow(form, tr("SDK:"), ZORHostPluginManager::GetSdkVersion(), "_AboutSdkLbl");
    AddRow(form, tr("Qt:"),
           tr("%1 (built with %2)").arg(QString::fromLatin1(qVersion()), QStringLiteral(QT_VERSION_STR)),
           "_AboutQtLbl");
    AddRow(form, tr("Graphics:"), ZORVisGraphicsContext::GetInstance()->GetDescription(),
           "_AboutGraphicsLbl");
    QStringList loaded;
    for (const ZORHostPlugin& plugin : plugins.GetPlugins()) {
        if (plugin.state == ZORHostPlugin::State::Loaded)
            loaded.append(plugin.name + u' ' + plugin.version);
    }
    AddRow(form, tr("Plug-ins:"), loaded.isEmpty() ? tr("none") : loaded.join(u'\n'), "_AboutPluginsLbl");
    tabs->addTab(versions, tr("Versions"));

    auto* notices = new QPlainTextEdit(ReadResource(":/host/acknowledgements.txt"), tabs);
    notices->setObjectName("_AboutNoticesEdit");
    notices->setAccessibleName(tr("Acknowledgements"));
    notices->setReadOnly(true);
    notices->setTabChangesFocus(true);
    tabs->addTab(notices, tr("Acknowledgements"));

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    buttons->setObjectName("_ButtonBox");
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    column->addWidget(buttons);
}
