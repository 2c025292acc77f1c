// The window that shows the help.

#pragma once

#include "help/ZORHostHelpPages.h"

#include <QWidget>

class QLineEdit;
class QPushButton;
class QTextBrowser;
class QTreeWidget;
class QTreeWidgetItem;

/// Contents at the left, which a search field filters by headings and texts, and the page at the right. Back and
/// Forward go through what was shown. Links lead to other pages, or into the web browser of the user.
class ZORHostHelpWindow : public QWidget
{
    Q_OBJECT

public:
    explicit ZORHostHelpWindow(QWidget* parent);

    void ShowPlace(const ZORHostHelpPlace& place);
    /// Shows a text that does not come from a page, such as what is known of a dialog without one.
    /// \param markdown  begins with its heading
    void ShowText(const QString& markdown);
    /// The text shown, without marks of formats.
    QString GetShownText() const;

public slots:
    void OnBackClicked();
    void OnForwardClicked();

protected:
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    struct Entry
    {
        ZORHostHelpPlace place; // null: a text
        QString text;
    };

    void FillContents();
    void FilterContents(const QString& text);
    void Visit(const Entry& entry);
    void ShowCurrent();
    void ScrollTo(const QString& slug);
    void SelectInContents(const ZORHostHelpPlace& place);
    void OnLinkClicked(const QUrl& link);
    void OnItemChosen(QTreeWidgetItem* item);

    QPushButton* m_backBtn;
    QPushButton* m_forwardBtn;
    QLineEdit* m_searchEdit;
    QTreeWidget* m_contents;
    QTextBrowser* m_browser;
    QList<Entry> m_history;
    qsizetype m_current = -1; // in m_history
};
