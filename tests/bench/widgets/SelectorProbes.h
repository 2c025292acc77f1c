// Classes of the selector's tests: features with a body, and commands that create geometries.

#pragma once

#include "core/ZORTestCommand.h"
#include "core/ZORTestDialog.h"

#include <ZORFeature/ZORFeatGeometry.h>

#include <QStringList>

class ZORTopBody;

/// A feature whose body is whatever the test says.
class ProbeFeature : public ZORFeatGeometry
{
    Q_OBJECT

public:
    ProbeFeature(ZORFeatObject* parent, ZORTopBody* body)
        : ZORFeatGeometry(parent)
        , m_body(body)
    {
    }
    ZORTopBody* GetBody() const override { return m_body; }

private:
    ZORTopBody* m_body; // not owned
};

/// Adds a point to the container at once and finishes.
class ProbePointCmd : public ZORTestCommand
{
    Q_OBJECT
    Q_CLASSINFO("label", "Create Probe Point")
    Q_CLASSINFO("createdTypes", "ZORGeoCartesianPoint ProbePoint")

public:
    Q_INVOKABLE explicit ProbePointCmd(ZORTestEnvironment* environment);
    void Execute() override;

    /// Class names of the probe commands that were executed, oldest first.
    static QStringList executed;
};

/// Has no label, so that it is offered under its class name. Fails.
class ProbeFailingCmd : public ZORTestCommand
{
    Q_OBJECT
    Q_CLASSINFO("createdTypes", "ProbePoint")

public:
    Q_INVOKABLE explicit ProbeFailingCmd(ZORTestEnvironment* environment);
    /// \throws ZORSysException "the probe failed"
    void Execute() override;
};

/// Two classes with the same label.
class ProbeTwinACmd : public ZORTestCommand
{
    Q_OBJECT
    Q_CLASSINFO("label", "Twin")
    Q_CLASSINFO("createdTypes", "ProbeTwin")

public:
    Q_INVOKABLE explicit ProbeTwinACmd(ZORTestEnvironment* environment);
    void Execute() override;
};

class ProbeTwinBCmd : public ZORTestCommand
{
    Q_OBJECT
    Q_CLASSINFO("label", "Twin")
    Q_CLASSINFO("createdTypes", "ProbeTwin")

public:
    Q_INVOKABLE explicit ProbeTwinBCmd(ZORTestEnvironment* environment);
    void Execute() override;
};

/// Bodies of dimension 1, and of no stated dimension.
class ProbeCurveBodyCmd : public ZORTestCommand
{
    Q_OBJECT
    Q_CLASSINFO("label", "Create Curve Body")
    Q_CLASSINFO("createdTypes", "ZORTopBody ProbeBody")
    Q_CLASSINFO("bodyDim", "1")

public:
    Q_INVOKABLE explicit ProbeCurveBodyCmd(ZORTestEnvironment* environment);
    void Execute() override;
};

class ProbeAnyBodyCmd : public ZORTestCommand
{
    Q_OBJECT
    Q_CLASSINFO("label", "Create Any Body")
    Q_CLASSINFO("createdTypes", "ZORTopBody ProbeBody")

public:
    Q_INVOKABLE explicit ProbeAnyBodyCmd(ZORTestEnvironment* environment);
    void Execute() override;
};

/// A dialog that adds a point on OK.
class ProbePointDlg : public ZORTestDialog
{
    Q_OBJECT
    Q_CLASSINFO("label", "Probe Point Dialog")
    Q_CLASSINFO("createdTypes", "ProbeDialogPoint")

public:
    Q_INVOKABLE explicit ProbePointDlg(ZORTestEnvironment* environment);
    bool Apply() override;
};

/// A dialog with one selector of points, as the modelling dialogs have them.
class ProbeSelectionDlg : public ZORTestDialog
{
    Q_OBJECT
    Q_CLASSINFO("label", "Probe Selection")

public:
    Q_INVOKABLE explicit ProbeSelectionDlg(ZORTestEnvironment* environment);
    bool Apply() override;
};
