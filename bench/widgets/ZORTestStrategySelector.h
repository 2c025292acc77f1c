// Widget that picks a draping strategy from the container.

#pragma once

#include <QWidget>

#include <memory>

class ZORCompStrategy;
class ZORTestEnvironment;
namespace Ui {
class ZORTestGeometrySelector;
}

/// Lists the strategies below the composites root of the container, by their labels. The form is that of
/// ZORTestGeometrySelector; no command is offered for strategies, so that "..." does nothing.
///
/// The first entry, and the choice after every reload, is a test entry: its handle points nowhere, and shows
/// how an operation copes with it.
///
/// Configured by the dynamic property "label" (string): text in front of the choice.
class ZORTestStrategySelector : public QWidget
{
    Q_OBJECT

public:
    explicit ZORTestStrategySelector(QWidget* parent);
    ~ZORTestStrategySelector() override;

    /// Binds the selector and fills it; called by the dialog that holds it, before it is shown.
    /// \param environment  not owned
    void SetEnvironment(ZORTestEnvironment* environment);

    /// The choice of the combo box; null when it is empty or the strategy has been deleted since. The handle
    /// of the test entry is no object: ask IsTestHandle() before it is used as one.
    ZORCompStrategy* GetSelectedStrategy() const;
    static bool IsTestHandle(const ZORCompStrategy* strategy);

signals:
    /// For dialogs that follow the choice; the selector itself never emits it.
    // The name of the parameter is established.
    void SelectionChanged(const ZORCompStrategy* Strategy); // NOLINT(readability-identifier-naming)

public slots:
    /// Lists the strategies anew; the test entry becomes the choice.
    void OnReload();
    /// Does nothing to be seen.
    void OnBrowseClicked();

private:
    ZORTestEnvironment* m_environment = nullptr; // not owned
    const std::unique_ptr<Ui::ZORTestGeometrySelector> m_ui;
};
