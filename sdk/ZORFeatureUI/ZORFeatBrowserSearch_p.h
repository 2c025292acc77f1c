// The search field of the feature browser.

#pragma once

#include <QLineEdit>
#include <QPersistentModelIndex>

class QTreeView;
class ZORFeatBrowserFilter;

/// Filters a tree while the user types. Escape clears the text, then returns to the tree, as do Down and Return, which
/// select the first match. What was expanded before the search is expanded again after it.
class ZORFeatBrowserSearch final : public QLineEdit
{
    Q_OBJECT

public:
    /// \param filter  the model of the view, both not owned; must outlive the field
    ZORFeatBrowserSearch(ZORFeatBrowserFilter* filter, QTreeView* view, QWidget* parent);

    bool IsSearching() const { return m_isSearching; }

signals:
    void FilterAboutToChange();
    void FilterChanged(bool isSearching);

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void OnTextChanged(const QString& text);
    void FocusFirstMatch();
    void KeepExpansion();
    void RestoreExpansion();

    ZORFeatBrowserFilter* m_filter;          // not owned
    QTreeView* m_view;                       // not owned
    QList<QPersistentModelIndex> m_expanded; // before the search; of the source of the filter
    bool m_isSearching = false;
};
