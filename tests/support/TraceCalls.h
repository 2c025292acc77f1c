// The calls of the SDK that a test makes.

#pragma once

#include <ZORSystem/ZORSysApiTrace.h>

#include <QScopeGuard>
#include <QStringList>

/// Runs \a act and returns the calls of the SDK that it made, in order, as the API trace shows them.
template<class Act>
QStringList TraceCalls(const Act& act)
{
    QStringList lines;
    ZORSysApiTrace* const trace = ZORSysApiTrace::GetInstance();
    const auto connection =
        QObject::connect(trace, &ZORSysApiTrace::CallTraced,
                         [&lines](const QByteArray& line) { lines.append(QString::fromUtf8(line)); });
    const auto end = qScopeGuard([&] {
        trace->SetEnabled(false);
        QObject::disconnect(connection);
    });
    trace->SetEnabled(true);
    act();
    return lines;
}
