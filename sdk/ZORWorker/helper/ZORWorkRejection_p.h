// Helper programs that cannot be used.

#pragma once

#include <QByteArray>
#include <QCoreApplication>
#include <QSet>
#include <QString>

#include <chrono>
#include <mutex>

/// Remembers the helper program that could not be used last, so that not every job finds that out again, and logs one line
/// for each change. Safe to use from any thread.
///
/// The program is tried again as soon as its file has changed, and otherwise after three times the time that finding out
/// took, at least 1 s.
class ZORWorkRejection
{
    Q_DECLARE_TR_FUNCTIONS(ZORWorkRejection)

public:
    using Clock = std::chrono::steady_clock;

    /// Returns what changes whenever somebody replaces or edits a file, and nothing where it cannot be examined.
    static QByteArray GetFileState(const QString& path);

    bool IsRejected(const QString& program);
    /// \param file    state of the program's file before it was tried
    /// \param effort  time that trying it took
    void Reject(const QString& program, const QByteArray& file, const QString& reason,
                Clock::duration effort);
    /// The program can be used.
    void Readmit(const QString& program);
    /// The program can be used, but not for jobs of this kind.
    void WarnOfKind(const QString& program, const QByteArray& kind);

private:
    std::mutex m_mutex; // of everything below
    QString m_program;  // empty: none
    QByteArray m_file;  // its state
    QString m_reason;
    Clock::time_point m_end;
    QSet<QString> m_warnings;
};
