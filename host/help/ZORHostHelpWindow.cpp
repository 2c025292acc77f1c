#include "help/ZORHostHelpWindow.h"

#include <QAbstractTextDocumentLayout>
#include <QDesktopServices>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QShortcut>
#include <QSplitter>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTreeWidget>
#include <QUrl>

namespace {

enum Role { PageRole = Qt::UserRole, SlugRole, BodyRole };

QPushButton* AddButton(QHBoxLayout* row, const QString& text, const char* objectName, const QKeySequence& key)
{
    auto* const button = new QPushButton(text);
    button->setObjectName(QLatin1String(objectName));
    button->setToolTip(key.toString(QKeySequence::NativeText));
    row->addWidget(button);
    QObject::connect(new QShortcut(key, button), &QShortcut::activated, button, &QPushButton::click);
    return button;
}

/// Hides the items that neither match nor hold one that does.
/// \return whether the item stays
bool Filter(QTreeWidgetItem* item, const QString& text, bool isWanted)
{
    const bool matches = isWanted || item->text(0).contains(text, Qt::CaseInsensitive)
                         || item->data(0, BodyRole).toString().contains(text, Qt::CaseInsensitive);
    bool stays = matches;
    for (int i = 0; i < item->childCount(); ++i)
        stays = Filter(item->child(i), text, isWanted) || stays;
    item->setHidden(!stays);
    return stays;
}

} // namespace

ZORHostHelpWindow::ZORHostHelpWindow(QWidget* parent)
    : QWidget(parent, Qt::Window)
{
    setObjectName("_HelpWindow");
    setWindowTitle(tr("Help"));
    const QSize room = screen()->availableSize() - QSize(40, 60);
    resize(QSize(860, 620).boundedTo(room));
    auto* const column = new QVBoxLayout(this);
    auto* const row = new QHBoxLayout;
    column->addLayout(row);
    m_backBtn = AddButton(row, tr("&Back"), "_HelpBackBtn", QKeySequence::Back);
    m_forwardBtn = AddButton(row, tr("&Forward"), "_HelpForwardBtn", QKeySequence::Forward);
    m_searchEdit = new QLineEdit(this);
    m_searchEdit->setObjectName("_HelpSearchEdit");
    m_searchEdit->setPlaceholderText(tr("Search"));
    m_searchEdit->setAccessibleName(tr("Search in the help"));
    m_searchEdit->setClearButtonEnabled(true);
    row->addWidget(m_searchEdit, 1);

    auto* const splitter = new QSplitter(this);
    splitter->setObjectName("_HelpSplitter");
    column->addWidget(splitter, 1);
    m_contents = new QTreeWidget(splitter);
    m_contents->setObjectName("_HelpContents");
    m_contents->setAccessibleName(tr("Contents"));
    m_contents->setHeaderHidden(true);
    m_browser = new QTextBrowser(splitter);
    m_browser->setObjectName("_HelpText");
    m_browser->setAccessibleName(tr("Help text"));
    m_browser->setOpenLinks(false);
    m_browser->document()->setDocumentMargin(12);
    splitter->setStretchFactor(1, 1);
    splitter->setSizes({width() / 3, width() * 2 / 3});

    connect(m_backBtn, &QPushButton::clicked, this, &ZORHostHelpWindow::OnBackClicked);
    connect(m_forwardBtn, &QPushButton::clicked, this, &ZORHostHelpWindow::OnForwardClicked);
    connect(m_searchEdit, &QLineEdit::textChanged, this, &ZORHostHelpWindow::FilterContents);
    connect(m_contents, &QTreeWidget::currentItemChanged, this, &ZORHostHelpWindow::OnItemChosen);
    connect(m_browser, &QTextBrowser::anchorClicked, this, &ZORHostHelpWindow::OnLinkClicked);
    m_backBtn->setEnabled(false);
    m_forwardBtn->setEnabled(false);
    FillContents();
    m_browser->setFocus();
}

void ZORHostHelpWindow::FillContents()
{
    const QStringList pages = ZORHostHelpPages::GetPages();
    for (const QString& page : pages) {
        QList<QTreeWidgetItem*> path; // the headings around the present one, by level
        const QList<ZORHostHelpHeading> headings = ZORHostHelpPages::GetHeadings(page);
        for (const ZORHostHelpHeading& heading : headings) {
            while (path.size() >= heading.level)
                path.removeLast();
            auto* const item = new QTreeWidgetItem(QStringList(heading.text));
            item->setToolTip(0, heading.text);
            item->setData(0, PageRole, page);
            item->setData(0, SlugRole, path.isEmpty() ? QString() : ZORHostHelpPages::MakeSlug(heading.text));
            item->setData(0, BodyRole, heading.body);
            if (path.isEmpty())
                m_contents->addTopLevelItem(item);
            else
                path.constLast()->addChild(item);
            path.append(item);
        }
    }
}

void ZORHostHelpWindow::FilterContents(const QString& text)
{
    const QString wanted = text.trimmed();
    for (int i = 0; i < m_contents->topLevelItemCount(); ++i)
        Filter(m_contents->topLevelItem(i), wanted, wanted.isEmpty());
    if (wanted.isEmpty())
        m_contents->collapseAll();
    else
        m_contents->expandAll();
}

void ZORHostHelpWindow::ShowPlace(const ZORHostHelpPlace& place)
{
    Visit({place, {}});
}

void ZORHostHelpWindow::ShowText(const QString& markdown)
{
    Visit({{}, markdown});
}

QString ZORHostHelpWindow::GetShownText() const
{
    return m_browser->toPlainText();
}

void ZORHostHelpWindow::Visit(const Entry& entry)
{
    const bool isShown = m_current >= 0 && m_history[m_current].place == entry.place
                         && m_history[m_current].text == entry.text;
    if (!isShown) {
        m_history.resize(m_current + 1);
        m_history.append(entry);
        ++m_current;
    }
    ShowCurrent();
}

void ZORHostHelpWindow::ShowCurrent()
{
    m_backBtn->setEnabled(m_current > 0);
    m_forwardBtn->setEnabled(m_current + 1 < m_history.size());
    if (m_current < 0)
        return;
    const Entry& entry = m_history[m_current];
    m_browser->setMarkdown(entry.place.IsNull() ? entry.text : ZORHostHelpPages::Read(entry.place.page));
    ScrollTo(entry.place.slug);
    SelectInContents(entry.place);
}

// Headings of Markdown have no anchors in documents of Qt.
void ZORHostHelpWindow::ScrollTo(const QString& slug)
{
    m_browser->moveCursor(QTextCursor::Start);
    m_browser->verticalScrollBar()->setValue(0);
    if (slug.isEmpty())
        return;
    const QTextDocument* const document = m_browser->document();
    for (QTextBlock block = document->begin(); block.isValid(); block = block.next()) {
        if (block.blockFormat().headingLevel() == 0 || ZORHostHelpPages::MakeSlug(block.text()) != slug)
            continue;
        m_browser->setTextCursor(QTextCursor(block));
        const QRectF place = document->documentLayout()->blockBoundingRect(block);
        m_browser->verticalScrollBar()->setValue(int(place.top()));
        return;
    }
}

void ZORHostHelpWindow::SelectInContents(const ZORHostHelpPlace& place)
{
    const QSignalBlocker blocker(m_contents);
    m_contents->setCurrentItem(nullptr);
    for (QTreeWidgetItemIterator item(m_contents); *item; ++item) {
        if ((*item)->data(0, PageRole) == place.page && (*item)->data(0, SlugRole) == place.slug) {
            m_contents->setCurrentItem(*item);
            return;
        }
    }
}

void ZORHostHelpWindow::OnItemChosen(QTreeWidgetItem* item)
{
    if (item)
        ShowPlace({item->data(0, PageRole).toString(), item->data(0, SlugRole).toString()});
}

void ZORHostHelpWindow::OnLinkClicked(const QUrl& link)
{
    if (!link.isRelative()) {
        QDesktopServices::openUrl(link);
        return;
    }
    const QString page = m_current < 0 ? QString() : m_history[m_current].place.page;
    const ZORHostHelpPlace place = ZORHostHelpPages::Resolve(page, link.toString());
    if (!place.IsNull())
        ShowPlace(place);
}

void ZORHostHelpWindow::OnBackClicked()
{
    if (m_current <= 0)
        return;
    --m_current;
    ShowCurrent();
}

void ZORHostHelpWindow::OnForwardClicked()
{
    if (m_current + 1 >= m_history.size())
        return;
    ++m_current;
    ShowCurrent();
}

void ZORHostHelpWindow::changeEvent(QEvent* event)
{
    // Links have the color of the palette in which the page was read.
    if (event->type() == QEvent::PaletteChange)
        ShowCurrent();
    QWidget::changeEvent(event);
}

void ZORHostHelpWindow::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape)
        close();
    else
        QWidget::keyPressEvent(event);
}
