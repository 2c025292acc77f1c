// Everything that writes files.

#pragma once

#include <QByteArray>
#include <QString>

#include <functional>
#include <ostream>
#include <string>
#include <vector>

/// One kind of file, written with one of two contents.
struct Writer
{
    enum Content { Small, Large };

    std::string name;
    /// \return the error; empty when all went well
    std::function<QString(const QString& path, Content content)> write;
};

inline void PrintTo(const Writer& writer, std::ostream* stream)
{
    *stream << writer.name;
}

/// All writers that replace a file. Small contents have less than 4 KiB, large ones 10 KB to 60 KB.
const std::vector<Writer>& GetWriters();
