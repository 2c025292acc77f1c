// A program that is not what a helper should be, in the way that its own name says:
//
//     dies              says why and exits              other-protocol    begins with another protocol
//     version silent            says nothing                    other-sdk         begins with another SDK
//     version rubbish           begins with rubbish             no-kinds          knows no kind
//     babbles           begins well, and answers a job with damaged messages, drawn from the job's input
//     host              not a helper: runs the job given as second argument in the helper program given as
//     the first one
//     leaving-host      the same, but ends as soon as the job runs

#include "TestKinds.h"

#include <ZORSystem/ZORSysVersion.h>
#include <ZORWorker/ZORWorkHelpers.h>
#include <ZORWorker/ZORWorkProcessor.h>
#include <ZORWorker/helper/ZORWorkProtocol_p.h>

#include <QCoreApplication>
#include <QFileInfo>

#include <array>
#include <cstdio>
#include <random>
#include <sys/socket.h>
#include <unistd.h>

namespace {

constexpr int kSocket = 3;

void Send(const QByteArray& bytes)
{
    for (qsizetype sent = 0; sent < bytes.size();) {
        const ssize_t count =
            send(kSocket, bytes.constData() + sent, size_t(bytes.size() - sent), MSG_NOSIGNAL);
        if (count <= 0)
            _exit(1);
        sent += count;
    }
}

ZORWorkProtocol::Hello MakeHello()
{
    return {ZORWorkProtocol::kVersion, ZORSysVersion::GetString().toUtf8(), {"test"}};
}

QByteArray Damage(QByteArray bytes, std::mt19937& random)
{
    for (unsigned count = random() % 4; count > 0 && !bytes.isEmpty(); --count) {
        const qsizetype at = qsizetype(random() % size_t(bytes.size()));
        switch (random() % 4) {
        case 0:
            bytes[at] = char(random());
            break;
        case 1:
            bytes[at] = char(uchar(bytes[at]) ^ (1U << (random() % 8)));
            break;
        case 2:
            bytes.remove(at, qsizetype(random() % 20));
            break;
        default:
            bytes.insert(at, QByteArray(qsizetype(random() % 20), char(random())));
        }
    }
    return bytes;
}

QByteArray MakeMessages(std::mt19937& random)
{
    namespace Protocol = ZORWorkProtocol;
    const std::array<Protocol::Message, 9> messages{Protocol::Progress{0.3},
                                                    Protocol::Progress{qQNaN()},
                                                    Protocol::Interim{"interim"},
                                                    Protocol::Log{0, "test.kind", "line"},
                                                    Protocol::Result{{"/etc/passwd"}, "data"},
                                                    Protocol::Result{{}, "data"},
                                                    Protocol::Failure{"reason", random() % 2 == 0},
                                                    Protocol::Canceled(),
                                                    MakeHello()};
    QByteArray bytes;
    for (unsigned count = random() % 6; count > 0; --count)
        bytes += Protocol::Encode(messages[random() % messages.size()]);
    return Damage(bytes, random);
}

// Answers every job, and leaves after the answer.
void Babble()
{
    Send(ZORWorkProtocol::Encode(MakeHello()));
    ZORWorkProtocol::Decoder decoder;
    std::array<char, 4096> buffer;
    for (;;) {
        const ssize_t count = recv(kSocket, buffer.data(), buffer.size(), 0);
        if (count <= 0)
            return;
        decoder.Append({buffer.data(), qsizetype(count)});
        while (const std::optional<ZORWorkProtocol::Message> message = decoder.Take()) {
            if (const auto* const job = std::get_if<ZORWorkProtocol::Job>(&*message)) {
                std::mt19937 random(job->input.mid(5).toUInt()); // behind "echo "
                Send(MakeMessages(random));
                return;
            }
        }
    }
}

int RunHost(int argc, char** argv, bool leavesEarly)
{
    const QCoreApplication application(argc, argv);
    RegisterTestKinds();
    ZORWorkHelpers::SetProgram(QString::fromLocal8Bit(argv[1]));
    ZORWorkProcessor processor;
    ZORWorkJob job;
    job.name = QStringLiteral("job");
    job.kind = "test";
    job.input = argv[2];
    ZORWorkResponse* const response = processor.AddJob(job);
    QObject::connect(response, &ZORWorkResponse::ProgressChanged, [leavesEarly] {
        std::puts("running");
        std::fflush(stdout);
        if (leavesEarly)
            QCoreApplication::quit();
    });
    processor.Execute();
    return QCoreApplication::exec();
}

void Act(const QString& name)
{
    ZORWorkProtocol::Hello hello = MakeHello();
    if (name == "dies") {
        std::fputs("something is missing\n", stderr);
    } else if (name == "silent") {
        for (;;)
            pause();
    } else if (name == "rubbish") {
        Send(QByteArray(100, '\xff'));
    } else if (name == "other-protocol") {
        ++hello.protocol;
        Send(ZORWorkProtocol::Encode(hello));
    } else if (name == "other-sdk") {
        hello.sdkVersion = "0.0.1";
        Send(ZORWorkProtocol::Encode(hello));
    } else if (name == "no-kinds") {
        hello.kinds.clear();
        Send(ZORWorkProtocol::Encode(hello));
    } else if (name == "babbles") {
        Babble();
    }
}

} // namespace

int main(int argc, char** argv)
{
    const QString name = QFileInfo(QString::fromLocal8Bit(argv[0])).fileName();
    if ((name == "host" || name == "leaving-host") && argc == 3)
        return RunHost(argc, argv, name == "leaving-host");
    Act(name);
    if (name != "dies" && name != "babbles") {
        std::array<char, 4096> buffer;
        while (recv(kSocket, buffer.data(), buffer.size(), 0) > 0) {
        }
    }
    return 1;
}
