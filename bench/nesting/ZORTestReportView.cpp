#include "nesting/ZORTestReportView.h"

#include "core/ZORTestErrorBox.h"

#include <ZORSystem/ZORSysReplacedFile.h>

#include <QAction>
#include <QBuffer>
#include <QDir>
#include <QEvent>
#include <QFileDialog>
#include <QMenu>
#include <QPdfWriter>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextEdit>

#include <algorithm>

namespace {

// Of a picture as the report gives it; further changes start from there.
constexpr int kWidthProperty = QTextFormat::UserProperty + 1;
constexpr int kHeightProperty = QTextFormat::UserProperty + 2;
constexpr double kPageWidth = 640; // pixels at 96 dots per inch within the margins of A4

struct Picture
{
    int position = 0; // of its character
    QTextImageFormat format;
};

QList<Picture> FindPictures(const QTextDocument& document)
{
    QList<Picture> pictures;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        for (auto piece = block.begin(); !piece.atEnd(); ++piece) {
            QTextImageFormat format = piece.fragment().charFormat().toImageFormat();
            if (!format.isValid())
                continue;
            if (!format.hasProperty(kWidthProperty)) {
                format.setProperty(kWidthProperty, format.width());
                format.setProperty(kHeightProperty, format.height());
            }
            pictures.append({piece.fragment().position(), format});
        }
    }
    return pictures;
}

} // namespace

ZORTestReportView::ZORTestReportView(QTextEdit* edit)
    : QObject(edit)
    , m_edit(edit)
{
    edit->document()->setUndoRedoEnabled(false);
    edit->viewport()->installEventFilter(this);
    edit->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(edit, &QWidget::customContextMenuRequested, this, &ZORTestReportView::OnContextMenuRequested);
    auto* const save = new QAction(tr("&Save Report As..."), edit);
    save->setObjectName("_SaveReportAction");
    save->setShortcut(QKeySequence::Save);
    save->setShortcutContext(Qt::WindowShortcut);
    connect(save, &QAction::triggered, this, &ZORTestReportView::OnSaveTriggered);
    edit->addAction(save);
}

void ZORTestReportView::SetReport(const QString& html)
{
    m_html = html;
    m_edit->clear();
    m_edit->insertHtml(html);
    m_edit->moveCursor(QTextCursor::Start);
    Fit();
}

void ZORTestReportView::FitPictures(QTextDocument* document, double width)
{
    QList<Picture> pictures = FindPictures(*document);
    double widest = 0;
    for (const Picture& picture : std::as_const(pictures))
        widest = std::max(widest, picture.format.doubleProperty(kWidthProperty));
    if (widest <= 0 || width <= 0)
        return;
    const double factor = width / widest;
    QTextCursor cursor(document);
    cursor.beginEditBlock();
    for (Picture& picture : pictures) {
        picture.format.setWidth(factor * picture.format.doubleProperty(kWidthProperty));
        picture.format.setHeight(factor * picture.format.doubleProperty(kHeightProperty));
        cursor.setPosition(picture.position);
        cursor.setPosition(picture.position + 1, QTextCursor::KeepAnchor);
        cursor.setCharFormat(picture.format);
    }
    cursor.endEditBlock();
}

// Room for a scroll bar is kept, so that its coming and going changes nothing.
void ZORTestReportView::Fit()
{
    const double room = m_edit->width() - 2 * m_edit->frameWidth()
                        - m_edit->verticalScrollBar()->sizeHint().width()
                        - 2 * m_edit->document()->documentMargin();
    FitPictures(m_edit->document(), room);
}

bool ZORTestReportView::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Resize)
        Fit();
    return QObject::eventFilter(watched, event);
}

void ZORTestReportView::OnContextMenuRequested(const QPoint& position)
{
    QMenu* const menu = m_edit->createStandardContextMenu(position);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addSeparator();
    menu->addActions(m_edit->actions());
    menu->popup(m_edit->viewport()->mapToGlobal(position));
}

QByteArray ZORTestReportView::MakePdf(const QTextDocument& report)
{
    const std::unique_ptr<QTextDocument> copy(report.clone());
    FitPictures(copy.get(), kPageWidth);
    QByteArray contents;
    QBuffer buffer(&contents);
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setPageSize(QPageSize(QPageSize::A4));
    writer.setPageMargins(QMarginsF(15, 15, 15, 15), QPageLayout::Millimeter);
    writer.setTitle(tr("Nesting report"));
    copy->print(&writer);
    return contents;
}

void ZORTestReportView::OnSaveTriggered()
{
    const QString pdf = tr("PDF files (*.pdf)");
    QString filter = pdf;
    QString path =
        QFileDialog::getSaveFileName(m_edit, tr("Save Report"), tr("report.pdf"),
                                     pdf + QLatin1String(";;") + tr("HTML files (*.html)"), &filter);
    if (path.isEmpty())
        return;
    if (QFileInfo(path).suffix().isEmpty())
        path += filter == pdf ? QLatin1String(".pdf") : QLatin1String(".html");
    const bool isHtml = path.endsWith(QLatin1String(".html"), Qt::CaseInsensitive)
                        || path.endsWith(QLatin1String(".htm"), Qt::CaseInsensitive);
    const QByteArray contents = isHtml ? m_html.toUtf8() : MakePdf(*m_edit->document());
    const QString reason = ZORSysReplacedFile::Replace(path, contents);
    if (!reason.isEmpty())
        ZORTestShowErrorBox(m_edit->window(),
                            tr("Cannot write '%1': %2").arg(QDir::toNativeSeparators(path), reason));
}
