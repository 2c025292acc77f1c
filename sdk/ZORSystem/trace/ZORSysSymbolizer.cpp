#include "ZORSysLoadedModules_p.h"
#include "ZORSysModuleCopy_p.h"
#include "ZORSysSymbolizer_p.h"

#include <QByteArray>
#include <QDir>
#include <QHash>
#include <QMutex>

#include <backtrace.h>
#include <cstdlib>
#include <cxxabi.h>
#include <link.h>
#include <map>
#include <memory>
#include <unistd.h>

namespace {

struct Symbols
{
    QByteArray fileName;              // the state keeps a pointer to it
    backtrace_state* state = nullptr; // null for a file that cannot be read
};

struct Symbolizer
{
    QMutex mutex;
    // The library has no way to free a state, so a file that is loaded again uses the one it has.
    std::map<ZORSysLoadedModules::FileIdentity, Symbols> symbols;
    QHash<quintptr, QStringList> cache;
    quint32 cacheGeneration = 0;
};

// Never destroyed: traces may be shown until the very end of the process.
Symbolizer& GetSymbolizer()
{
    static Symbolizer* const symbolizer = new Symbolizer;
    return *symbolizer;
}

// Missing or damaged debug information is not an error here: the frame shows less.
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

// Reads the debug information of a module once. Addresses are those in its file.
Symbols ReadSymbols(const ZORSysLoadedModules::Module& module)
{
    const int copy = ZorSysCopyModule(module);
    if (copy < 0)
        return {};
    Symbols symbols;
    symbols.fileName = "/proc/self/fd/" + QByteArray::number(copy);
    symbols.state = backtrace_create_state(symbols.fileName.constData(), 1, IgnoreError, nullptr);
    if (symbols.state) {
        // The library opens the file when it resolves the first address.
        QString ignored;
        backtrace_syminfo(symbols.state, 0, SetSymbol, IgnoreError, &ignored);
    }
    close(copy); // what the library has mapped stays
    return symbols;
}

QStringList Resolve(backtrace_state* state, const ZORSysLoadedModules::Module& module, quintptr returnAddress)
{
    const quintptr call =
        returnAddress - 1 - module.loadAddress; // the next instruction may be on another line
    QString name = PlainAddress(returnAddress);
    if (state) {
        QStringList lines;
        backtrace_pcinfo(state, call, AppendSourceLine, IgnoreError, &lines);
        for (qsizetype i = 0; i + 1 < lines.size(); ++i)
            lines[i] += QLatin1String(" (inlined)");
        if (!lines.isEmpty())
            return lines;
        backtrace_syminfo(state, call, SetSymbol, IgnoreError, &name);
    }
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

    auto symbols = symbolizer.symbols.find(module->file);
    if (symbols == symbolizer.symbols.end())
        symbols = symbolizer.symbols.emplace(module->file, ReadSymbols(*module)).first;
    const QStringList lines = Resolve(symbols->second.state, *module, returnAddress);
    symbolizer.cache.insert(returnAddress, lines);
    return lines;
}

// The linker puts this function in front of the one of the C library wherever this module calls that. libbacktrace
// would read the files of all loaded libraries; this one presents only the file that it was created for, as the
// program itself.
// NOLINTNEXTLINE(readability-identifier-naming)
extern "C" int __wrap_dl_iterate_phdr(int (*callback)(dl_phdr_info*, size_t, void*), void* data)
{
    dl_phdr_info info = {};
    info.dlpi_name = "";
    return callback(&info, sizeof info, data);
}
