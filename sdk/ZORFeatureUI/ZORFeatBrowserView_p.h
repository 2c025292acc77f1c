// The tree of the feature browser.

#pragma once

#include <ZORFeatureUI/ZORFeatBrowserWidget.h>

#include <QTreeView>

/// One column of names that is as wide as its items, and at least as wide as the view; with the option NarrowNames as
/// wide as the view. Shows a text when it is empty.
class ZORFeatBrowserView final : public QTreeView
{
    Q_OBJECT

public:
    explicit ZORFeatBrowserView(QWidget* parent);

    /// To be called when the model is set.
    void SetOptions(ZORFeatBrowserWidget::Options options);
    /// \param text  shown in the empty tree
    void SetEmptyText(const QString& text);
    /// Selects exactly these items of the first column.
    /// \return whether other items were selected before
    bool SelectExactly(const QModelIndexList& indexes);

signals:
    /// \param index  of the item under the pointer; invalid beside the items
    void Hovered(const QModelIndex& index);
    /// \param index  of an item, in the column of eyes
    void EyeClicked(const QModelIndex& index);

protected:
    bool viewportEvent(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    bool ClickEye(const QMouseEvent* event);

    ZORFeatBrowserWidget::Options m_options;
    QString m_emptyText;
    QPersistentModelIndex m_hovered;
    bool m_isHovering = false;
    bool m_isEyePressed = false;
};
