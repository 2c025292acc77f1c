// Runs a fuzz target on every file of a corpus, without a fuzzing engine.

#include "FuzzTarget.h"

#include <QDirIterator>
#include <QFile>

#include <cstdio>

namespace {

/// Returns whether the file can be read.
bool ReplayFile(const QString& path)
{
    // Printed before the run, so that a crash shows its input.
    std::printf("%s\n", qPrintable(path));
    std::fflush(stdout);
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const QByteArray input = file.readAll();
    LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(input.constData()), size_t(input.size()));
    return true;
}

} // namespace

int main(int argc, char** argv)
{
    LLVMFuzzerInitialize(&argc, &argv);
    LLVMFuzzerTestOneInput(nullptr, 0);
    int count = 0;
    for (int i = 1; i < argc; ++i) {
        const QString argument = QFile::decodeName(argv[i]);
        if (QFileInfo(argument).isFile()) {
            if (!ReplayFile(argument))
                return EXIT_FAILURE;
            ++count;
            continue;
        }
        QDirIterator files(argument, QDir::Files);
        while (files.hasNext()) {
            if (!ReplayFile(files.next()))
                return EXIT_FAILURE;
            ++count;
        }
    }
    std::printf("%d inputs\n", count);
    return count > 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
