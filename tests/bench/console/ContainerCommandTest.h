// The commands of the container with a file of their own.

#pragma once

#include "support/BenchTest.h"

#include <ZORFeature/ZORFeatRoot.h>

#include <QFile>
#include <QMetaClassInfo>

class ContainerCommandTest : public BenchTest
{
protected:
    ContainerCommandTest()
        : path(GetPath("part.ZORCont"))
    {
    }

    static QByteArray LabelOf(const QMetaObject& type)
    {
        return type.classInfo(type.indexOfClassInfo("label")).value();
    }
    void Save()
    {
        answers.AnswerFile(path);
        Open("ZORTestSaveContainerCmd");
        answers.Take();
        finished.clear();
    }
    static QByteArray ReadFile(const QString& name)
    {
        QFile file(name);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }
    /// The registered classes of roots, in the order in which the container returns them.
    QStringList GetRootClasses() const
    {
        QStringList names;
        for (const QMetaObject* type : GetContainer()->GetRegisteredTypes()) {
            if (type->inherits(&ZORFeatRoot::staticMetaObject))
                names.append(QLatin1String(type->className()));
        }
        return names;
    }
    MessageBoxCatcher::Box ErrorBox(const QString& text) const
    {
        return {QMessageBox::Critical, "Error", text, QMessageBox::Ok, nullptr};
    }

    const QString path;
};
