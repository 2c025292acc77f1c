// Fixture of the tests of ZORWorkProcessor.

#pragma once

#include "WorkDirectories.h"
#include "support/Printers.h"

#include <ZORWorker/ZORWorkProcessor.h>

#include <QFile>
#include <QMessageLogContext>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <utility>

using Status = ZORWorkResponse::Status;

constexpr int kPatience = 30000; // ms until a test gives up

inline QStringList s_messages;

inline void CollectMessage(QtMsgType, const QMessageLogContext& context, const QString& message)
{
    s_messages.append(QString::fromLatin1(context.category) + ": " + message);
}

/// A processor with a private base directory; messages are collected, and nothing may be left in the directory.
class ProcessorTest : public testing::Test
{
protected:
    ProcessorTest()
    {
        processor->SetBaseDirectory(base.path());
        s_messages.clear();
        m_previous = qInstallMessageHandler(CollectMessage);
    }
    ~ProcessorTest() override
    {
        processor.reset();
        EXPECT_TRUE(QTest::qWaitFor([this] { return ListRooms(base.path()).isEmpty(); }, kPatience));
        qInstallMessageHandler(m_previous);
    }

    ZORWorkResponse* Add(std::function<ZORWorkResult(const ZORWorkContext&)> run, bool isKept = false)
    {
        return processor->AddJob({"cut out", std::move(run), isKept});
    }
    /// Runs even if it is stopped before its start.
    ZORWorkResponse* AddStoppable(std::function<ZORWorkResult(const ZORWorkContext&)> run)
    {
        ZORWorkJob job{"cut out", std::move(run)};
        job.runsWhenStopped = true;
        return processor->AddJob(job);
    }
    ZORWorkResponse* AddThrowing(std::function<void()> thrower)
    {
        return Add([thrower](const ZORWorkContext&) {
            thrower();
            return ZORWorkResult();
        });
    }
    /// Runs until it is cancelled.
    ZORWorkResponse* AddEndless()
    {
        return Add([](const ZORWorkContext& context) -> ZORWorkResult {
            for (;;) {
                context.ThrowIfCanceled();
                QThread::yieldCurrentThread();
            }
        });
    }
    static bool WaitFor(const ZORWorkResponse* response, Status status)
    {
        return QTest::qWaitFor([=] { return response->GetStatus() == status; }, kPatience);
    }
    QStringList GetDirectories() const { return ListWorkDirectories(base.path()); }

    static QList<int> GetStatuses(const QSignalSpy& spy)
    {
        QList<int> statuses;
        for (const QList<QVariant>& arguments : spy)
            statuses.append(arguments[0].value<Status>());
        return statuses;
    }

    const QTemporaryDir base;
    std::unique_ptr<ZORWorkProcessor> processor = std::make_unique<ZORWorkProcessor>();

private:
    QtMessageHandler m_previous = nullptr;
};

inline ZORWorkResult WriteOne(const ZORWorkContext& context)
{
    const QString path = context.GetWorkDirectory() + "/made.txt";
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("made");
    return ZORWorkResult({ZORWorkResource(path)});
}
