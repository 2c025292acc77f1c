#include "ZORWorkRemoval_p.h"

#include <QFile>
#include <QFileInfo>

#include <condition_variable>
#include <csignal>
#include <cstdio>
#include <deque>
#include <filesystem>
#include <mutex>
#include <system_error>
#include <thread>

namespace {

struct Hidden
{
    std::filesystem::path path;
    std::shared_ptr<const void> kept;
};

/// The directories to be removed, and the thread that removes them.
class Remover
{
public:
    /// Never destroyed: the thread runs until the end of the process.
    static Remover& GetInstance()
    {
        static auto* const remover = new Remover;
        return *remover;
    }

    /// \return false if there is no thread; then nothing happened
    bool Add(const std::filesystem::path& path, const std::shared_ptr<const void>& kept)
    {
        const std::lock_guard lock(m_mutex);
        try {
            m_waiting.push_back({path, kept});
            if (!m_hasThread)
                std::thread(&Remover::Serve, this).detach();
            m_hasThread = true;
        } catch (const std::system_error&) {
            m_waiting.pop_back();
            return false;
        }
        m_changed.notify_all();
        return true;
    }
    void Await(std::chrono::milliseconds time)
    {
        std::unique_lock lock(m_mutex);
        m_changed.wait_for(lock, time, [this] { return m_waiting.empty(); });
    }

private:
    [[noreturn]] void Serve()
    {
        sigset_t set;
        sigfillset(&set);
        pthread_sigmask(SIG_SETMASK, &set, nullptr); // the program's signals are not for this thread
        std::unique_lock lock(m_mutex);
        for (;;) {
            m_changed.wait(lock, [this] { return !m_waiting.empty(); });
            Hidden& hidden = m_waiting.front(); // others only append
            lock.unlock();
            std::error_code error; // what cannot be removed stays
            std::filesystem::remove_all(hidden.path, error);
            hidden.kept.reset();
            lock.lock();
            m_waiting.pop_front(); // only now, since others wait until the list is empty
            m_changed.notify_all();
        }
    }

    std::mutex m_mutex; // of everything below
    std::condition_variable m_changed;
    std::deque<Hidden> m_waiting; // the first one is being removed
    bool m_hasThread = false;
};

} // namespace

void ZORWorkRemoval::Remove(std::unique_ptr<QTemporaryDir> directory, const std::shared_ptr<const void>& kept)
{
    const QFileInfo info(directory->path());
    const QString hidden = info.path() + QStringLiteral("/.removed-") + info.fileName();
    const QByteArray from = QFile::encodeName(info.filePath());
    const QByteArray to = QFile::encodeName(hidden);
    if (std::rename(from.constData(), to.constData()) != 0)
        return; // the destructor removes it
    if (Remover::GetInstance().Add(to.toStdString(), kept))
        directory->setAutoRemove(false);
    else
        std::rename(to.constData(), from.constData());
}

void ZORWorkRemoval::Await(std::chrono::milliseconds time)
{
    Remover::GetInstance().Await(time);
}
