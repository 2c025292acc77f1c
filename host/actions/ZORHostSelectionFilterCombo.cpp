#include "actions/ZORHostSelectionFilterCombo.h"

#include "view/ZORHostSelection.h"

#include <QPointer>

ZORHostSelectionFilterCombo::ZORHostSelectionFilterCombo(ZORHostSelection* selection, QWidget* parent)
    : QComboBox(parent)
{
    setObjectName("_SelectionFilterCombo");
    setAccessibleName(tr("Selection filter"));
    setToolTip(tr("Chooses which objects can be selected in the view"));
    setStatusTip(toolTip());
    // Otherwise the view would lose its keys to the box.
    setFocusPolicy(Qt::TabFocus);
    addItem(tr("All objects"), kZORHostAllObjectKinds.toInt());
    for (const ZORHostObjectKind kind :
         {ZORHostObjectKind::Point, ZORHostObjectKind::Curve, ZORHostObjectKind::Surface,
          ZORHostObjectKind::Body, ZORHostObjectKind::Feature})
        addItem(ZORHostObjectKindName(kind), ZORHostObjectKinds(kind).toInt());
    const auto show = [this](ZORHostObjectKinds kinds) { setCurrentIndex(findData(kinds.toInt())); };
    show(selection->GetFilter());
    connect(selection, &ZORHostSelection::FilterChanged, this, show);
    connect(this, &QComboBox::activated, this, [this, chosen = QPointer(selection)](int index) {
        if (chosen)
            chosen->SetFilter(ZORHostObjectKinds::fromInt(itemData(index).toUInt()));
    });
}
