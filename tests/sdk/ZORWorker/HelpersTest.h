// Fixture of the tests of jobs in helper processes.

#pragma once

#include "WorkDirectories.h"
#include "support/Printers.h"

#include <ZORWorker/ZORWorkHelpers.h>
#include <ZORWorker/ZORWorkProcessor.h>
#include <ZORWorker/helper/ZORWorkHelperRun_p.h>

#include <QSet>
#include <QStringList>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

#include <memory>

class HelpersTest : public testing::Test
{
protected:
    using Status = ZORWorkResponse::Status;

    static constexpr int kPatience = 60000; // ms until a test gives up

    HelpersTest();
    ~HelpersTest() override;

    /// Of a program that belongs to the tests.
    static QString GetProgram(const QString& name);
    /// Lines of the log since the last call of ClearMessages() that contain \a part, each with its category.
    static QStringList GetMessages(const QString& part = {});
    static void ClearMessages();
    /// Ids of the processes that \a parent has started, zombies included.
    static QSet<qint64> GetChildren(qint64 parent);
    /// False for zombies.
    static bool IsAlive(qint64 process);

    ZORWorkResponse* Add(const QByteArray& command, bool runsWhenStopped = false);
    static bool WaitForEnd(const ZORWorkResponse* response)
    {
        return QTest::qWaitFor([=] { return response->IsAtEnd(); }, kPatience);
    }
    static bool WaitFor(const ZORWorkResponse* response, Status status)
    {
        return QTest::qWaitFor([=] { return response->GetStatus() == status; }, kPatience);
    }
    static bool WaitForProgress(const ZORWorkResponse* response)
    {
        return QTest::qWaitFor([=] { return response->GetProgress() > 0; }, kPatience);
    }
    /// Runs one job to its end. Its data, or with "! " before it the reason of its failure.
    QString RunJob(const QByteArray& command);
    /// Makes \a name the helper program, which then is a program that acts as its name says.
    void UseImpostor(const QString& name);
    /// What the base directory holds, with the directories of jobs instead of the folders of their processes.
    QStringList GetDirectories() const { return ListWorkDirectories(base.path()); }
    /// The folders of processes in the base directory.
    QStringList GetRooms() const { return ListRooms(base.path()); }

    const QTemporaryDir base;
    std::unique_ptr<ZORWorkProcessor> processor = std::make_unique<ZORWorkProcessor>();

private:
    const QTemporaryDir m_programs;
    QtMessageHandler m_previous = nullptr;
};
