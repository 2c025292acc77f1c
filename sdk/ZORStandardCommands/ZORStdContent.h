// Base of the contents of the dialogs.

#pragma once

#include "ZORStdObjectCombo.h"

#include <ZORCommand/ZORCmdPickRequest.h>

#include <QPointer>
#include <QWidget>

class QComboBox;
class QFormLayout;
class QLineEdit;
class ZORCmnPickButton;
class ZORCmnUnitSpinBox;
class ZORFeatEnvironment;
class ZORFeatObject;
class ZORMathPoint;
class ZORMathVector;
class ZORStdCreation;

/// A form of rows. It checks what was entered whenever something changes, and creates or changes objects of its
/// environment only in Apply().
///
/// Editing. With an object to edit the rows show its values. The label follows that of the object until the user
///          changes it. When the object is deleted meanwhile, that is the problem.
class ZORStdContent : public QWidget
{
    Q_OBJECT

public:
    /// What is wrong with the input, a sentence; empty for nothing.
    QString GetProblem() const { return m_problem; }
    /// Checks the input; at the end of a constructor, and whenever something changes that no row knows of.
    void Check();

    /// Creates an object, or changes the edited one; the input has no problem.
    /// \throws ZORSysException when the SDK refuses it; nothing has changed then
    void Apply();

signals:
    void ProblemChanged(const QString& problem);

protected:
    /// \param environment  not owned, must outlive the content
    /// \param edited       not owned, may be destroyed at any time; null to create an object
    ZORStdContent(ZORFeatEnvironment* environment, ZORFeatObject* edited, QWidget* parent);

    /// Creates the object. As Apply().
    virtual void Create() = 0;
    /// Changes the edited object, but for its label. As Apply(); does nothing here.
    virtual void Change();
    /// Whether the content was made for an object, which may be destroyed by now.
    bool IsEditing() const { return m_isEditing; }
    /// The object to edit; null for none, once it is destroyed, and where it is of another class.
    template<class T>
    T* GetEdited() const
    {
        return qobject_cast<T*>(m_edited.data());
    }

    /// Enables and fills what depends on other rows; here nothing. Before FindProblem().
    virtual void UpdateRows();
    /// What is wrong with the input now.
    virtual QString FindProblem() const = 0;
    ZORFeatContainer* GetContainer() const { return m_container; }
    QFormLayout* GetForm() const { return m_form; }

    // Rows. The object names are for automation; texts have a mnemonic and end in a colon.

    /// The row for the name of the object, "_LabelEdit".
    /// \param wanted  of a new object, with the next free number
    void AddLabel(const QString& wanted);
    /// The row for the folder that the object comes into, "_FolderCombo"; the composites root by default. Only for new
    /// objects.
    void AddFolder();
    /// What a button beside a row picks in the view.
    struct Picking
    {
        ZORCmdPickRequest::Kinds kinds; ///< 0: there is no button
        QString prompt;
    };
    /// \param objectName  "_SurfaceCombo": the button is then "_SurfacePickBtn"
    ZORStdObjectCombo* AddObjects(const char* objectName, const QString& text,
                                  const ZORStdObjectCombo::Filter& filter, const QString& noneText = {},
                                  const Picking& picking = {});
    ZORStdObjectCombo* AddPoints(const char* objectName, const QString& text, const QString& noneText = {});
    ZORStdObjectCombo* AddSurfaces(const char* objectName, const QString& text, const QString& noneText = {});
    ZORStdObjectCombo* AddRosettes(const QString& text);
    /// Puts a button behind a combo box of objects that runs the command that creates some; what comes next is
    /// selected.
    void AddCreator(ZORStdObjectCombo* combo, const char* objectName, const QByteArray& actionId);
    ZORCmnUnitSpinBox* AddNumber(const char* objectName, const QString& text, const char* magnitude,
                                 double value);
    QComboBox* AddChoice(const char* objectName, const QString& text, const QStringList& choices);
    /// Three numbers in one row.
    struct Triple
    {
        QWidget* row = nullptr;
        ZORCmnUnitSpinBox* x = nullptr;
        ZORCmnUnitSpinBox* y = nullptr;
        ZORCmnUnitSpinBox* z = nullptr;

        ZORMathPoint GetPoint() const;
        void SetPoint(const ZORMathPoint& point) const;
        ZORMathVector GetVector() const;
    };
    /// \param name  "_Origin" for "_OriginXSpin" ...
    Triple AddTriple(const QString& name, const QString& text, const char* magnitude,
                     const ZORMathVector& value);
    /// Puts a button behind three coordinates that picks them, "_OriginPointBtn".
    void AddPointPicker(const Triple& triple, const QString& objectName);
    /// A row of any widget, in which the keyboard reaches \a buddy.
    void AddRow(const QString& text, QWidget* row, QWidget* buddy);
    /// \param field  a row, or the field in one
    void SetRowVisible(QWidget* field, bool isVisible);

    QString GetLabel() const;
    /// What is wrong with the label; empty for nothing.
    QString FindLabelProblem() const;
    /// The folder that was chosen; the composites root is created when it is not there.
    ZORFeatObject* GetFolder(ZORStdCreation& creation) const;

private:
    ZORCmnPickButton* AddPicker(QWidget* field, const QString& objectName, const Picking& picking);
    QString FindDeletion() const;
    QString GetRowText(const QWidget* row) const;
    ZORCmnUnitSpinBox* MakeNumber(const QString& objectName, const char* magnitude, double value);

    ZORFeatContainer* const m_container; // not owned
    QFormLayout* const m_form;
    const QPointer<ZORFeatObject> m_edited; // not owned
    const bool m_isEditing;
    QString m_editedLabel; // the last one
    QLineEdit* m_labelEdit = nullptr;
    ZORStdObjectCombo* m_folderCombo = nullptr;
    QString m_problem;
};
