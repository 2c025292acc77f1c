// Base of the contents of the dialogs.

#pragma once

#include "ZORStdObjectCombo.h"

#include <QWidget>

class QComboBox;
class QFormLayout;
class QLineEdit;
class ZORCmnUnitSpinBox;
class ZORFeatEnvironment;
class ZORFeatObject;
class ZORMathPoint;
class ZORMathVector;
class ZORStdCreation;

/// A form of rows. It checks what was entered whenever something changes, and creates or changes objects of its
/// environment only in Apply().
class ZORStdContent : public QWidget
{
    Q_OBJECT

public:
    /// What is wrong with the input, a sentence; empty for nothing.
    QString GetProblem() const { return m_problem; }
    /// Checks the input; at the end of a constructor, and whenever something changes that no row knows of.
    void Check();

    /// Does what the dialog is for; the input has no problem.
    /// \throws ZORSysException when the SDK refuses it; nothing has changed then
    virtual void Apply() = 0;

signals:
    void ProblemChanged(const QString& problem);

protected:
    /// \param environment  not owned, must outlive the content
    ZORStdContent(ZORFeatEnvironment* environment, QWidget* parent);

    /// Enables and fills what depends on other rows; here nothing. Before FindProblem().
    virtual void UpdateRows();
    /// What is wrong with the input now.
    virtual QString FindProblem() const = 0;
    ZORFeatContainer* GetContainer() const { return m_container; }
    QFormLayout* GetForm() const { return m_form; }

    // Rows. The object names are for automation; texts end in a colon.

    /// The row for the name of the object, "_LabelEdit".
    void AddLabel(const QString& label);
    /// The row for the folder that the object comes into, "_FolderCombo"; the composites root by default.
    void AddFolder();
    ZORStdObjectCombo* AddObjects(const char* objectName, const QString& text,
                                  const ZORStdObjectCombo::Filter& filter, const QString& noneText = {});
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
        ZORMathVector GetVector() const;
    };
    /// \param name  "_Origin" for "_OriginXSpin" ...
    Triple AddTriple(const QString& name, const QString& text, const char* magnitude,
                     const ZORMathVector& value);
    /// A row of any widget, in which the keyboard reaches \a buddy.
    void AddRow(const QString& text, QWidget* row, QWidget* buddy);
    void SetRowVisible(QWidget* row, bool isVisible);

    QString GetLabel() const;
    /// What is wrong with the label; empty for nothing.
    QString FindLabelProblem() const;
    /// The folder that was chosen; the composites root is created when it is not there.
    ZORFeatObject* GetFolder(ZORStdCreation& creation) const;

private:
    ZORCmnUnitSpinBox* MakeNumber(const QString& objectName, const char* magnitude, double value);

    ZORFeatContainer* const m_container; // not owned
    QFormLayout* const m_form;
    QLineEdit* m_labelEdit = nullptr;
    ZORStdObjectCombo* m_folderCombo = nullptr;
    QString m_problem;
};
