#include "ZORSysLoadedModules_p.h"
#include "ZORSysSymbolizer_p.h"

#include <QByteArray>
#include <QDir>
#include <QHash>
#include <QMutex>

#include <backtrace.h>
#include <cstdlib>
#include <cxxabi.h>
#include <memory>

namespace {

struct Symbolizer
{
    QMutex mutex;
    backtrace_state* state = nullptr; // the library has no way to free one
    quint32 stateGeneration = 0;      // modules up to this generation are known to the state
    QHash<quintptr, QStringList> cache;
    quint32 cacheGeneration = 0;
};

// Never destroyed: traces may be shown until the very end of the process.
Symbolizer& GetSymbolizer()
{
    static Symbolizer* const symbolizer = new Symbolizer;
    return *symbolizer;
}

// Missing or damaged debug information is no error here: the frame shows less.
void IgnoreError(void*, const char*, int) {}

QString Demangled(const char* name)
{
    int status = 0;
    const std::unique_ptr<char, decltype(&std::free)> text(
        abi::__cxa_demangle(name, nullptr, nullptr, &status), &std::free);
    return QString::fromUtf8(status == 0 && text ? text.get() : name);
}

// Builds may name files relative to their folder: the way up to the sources says nothing.
QString SourcePath(const char* file)
{
    QString path = QDir::cleanPath(QString::fromLocal8Bit(file));
    while (path.startsWith(QLatin1String("../")))
        path.remove(0, 3);
    return path;
}

int AppendSourceLine(void* lines, uintptr_t, const char* file, int line, const char* function)
{
    if (!function)
        return 0;
    QString text = Demangled(function);
    if (file)
        text += QLatin1String(" at ") + SourcePath(file) + u':' + QString::number(line);
    static_cast<QStringList*>(lines)->append(text);
    return 0;
}

void SetSymbol(void* name, uintptr_t, const char* symbol, uintptr_t, uintptr_t)
{
    if (symbol)
        *static_cast<QString*>(name) = Demangled(symbol);
}

QString PlainAddress(quintptr address)
{
    return QLatin1String("0x") + QString::number(address, 16);
}

QStringList Resolve(backtrace_state* state, const ZORSysLoadedModules::Module& module, quintptr returnAddress)
{
    const quintptr call = returnAddress - 1; // the next instruction may belong to another line
    QStringList lines;
    backtrace_pcinfo(state, call, AppendSourceLine, IgnoreError, &lines);
    if (!lines.isEmpty()) {
        for (qsizetype i = 0; i + 1 < lines.size(); ++i)
            lines[i] += QLatin1String(" (inlined)");
        return lines;
    }
    QString name = PlainAddress(returnAddress);
    backtrace_syminfo(state, call, SetSymbol, IgnoreError, &name);
    const QByteArray library = module.path.mid(module.path.lastIndexOf('/') + 1);
    return {name + QLatin1String(" in ") + QString::fromLocal8Bit(library)};
}

} // namespace

QStringList ZorSysDescribeFrame(quintptr returnAddress, quint32 generation)
{
    Symbolizer& symbolizer = GetSymbolizer();
    const QMutexLocker lock(&symbolizer.mutex);
    const quint32 now = ZORSysLoadedModules::Update();
    const auto module = ZORSysLoadedModules::Find(returnAddress - 1);
    if (!module || module->generation > generation)
        return {PlainAddress(returnAddress)};

    if (symbolizer.cacheGeneration != now) {
        symbolizer.cache.clear();
        symbolizer.cacheGeneration = now;
    }
    const auto known = symbolizer.cache.constFind(returnAddress);
    if (known != symbolizer.cache.constEnd())
        return *known;

    if (!symbolizer.state || module->generation > symbolizer.stateGeneration) {
        symbolizer.state = backtrace_create_state(nullptr, 1, IgnoreError, nullptr);
        symbolizer.stateGeneration = now;
    }
    const QStringList lines = symbolizer.state ? Resolve(symbolizer.state, *module, returnAddress)
                                               : QStringList(PlainAddress(returnAddress));
    symbolizer.cache.insert(returnAddress, lines);
    return lines;
}
