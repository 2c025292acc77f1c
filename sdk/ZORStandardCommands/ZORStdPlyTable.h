// Editor of a stack of plies.

#pragma once

#include "ZORStdPlyModel.h"

#include <QWidget>

class QLabel;
class QPushButton;
class QTableView;
class ZORFeatContainer;

/// The table of the plies, "_PlyTable", with buttons to change the stack: "_AddPlyBtn", "_RemovePlyBtn",
/// "_PlyUpBtn", "_PlyDownBtn", "_MirrorBtn", and "_MaterialsBtn" for the material library.
class ZORStdPlyTable final : public QWidget
{
    Q_OBJECT

public:
    /// \param container  not owned, must outlive the table
    ZORStdPlyTable(ZORFeatContainer* container, QWidget* parent);
    ~ZORStdPlyTable() override;

    const ZORStdPlyModel& GetModel() const { return *m_model; }
    /// Fills the empty table with plies that exist.
    void SetPlies(const QList<ZORCompPly*>& plies);

signals:
    void Changed();

private:
    QPushButton* AddButton(QLayout* column, const char* objectName, const QString& text,
                           void (ZORStdPlyTable::*slot)());
    void OnAdd();
    void OnRemove();
    void OnUp();
    void OnDown();
    void OnMirror();
    void OnMaterials();
    void Update();
    void Move(int first, int selected);
    int GetRow() const;

    ZORFeatContainer* const m_container; // not owned
    ZORStdPlyModel* const m_model;
    QTableView* const m_view;
    QLabel* const m_summaryLbl;
    QPushButton* m_removeBtn = nullptr;
    QPushButton* m_upBtn = nullptr;
    QPushButton* m_downBtn = nullptr;
    QPushButton* m_mirrorBtn = nullptr;
};
