// Choice of what can be selected in the view.

#pragma once

#include <QComboBox>

class ZORHostSelection;

/// Sets and shows the filter of a selection: everything, or objects of one kind.
///
/// Thread safety: main thread only.
class ZORHostSelectionFilterCombo : public QComboBox
{
    Q_OBJECT

public:
    /// \param selection  not owned; may die first
    ZORHostSelectionFilterCombo(ZORHostSelection* selection, QWidget* parent);
};
