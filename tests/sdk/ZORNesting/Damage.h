// Random damage to files.

#pragma once

#include <QByteArray>
#include <QList>

#include <random>

/// \return \a usual, or the number in the environment variable ZOR_FUZZ_RUNS: for long runs under sanitizers
inline int GetFuzzRuns(int usual)
{
    return std::max(usual, qEnvironmentVariableIntValue("ZOR_FUZZ_RUNS"));
}

/// One to six times: changes, removes or repeats bytes, cuts the end off, or puts in a word.
/// \param words  that mean something in files of this kind
inline QByteArray Damage(QByteArray content, const QList<QByteArray>& words, std::mt19937& random)
{
    const auto below = [&random](qsizetype limit) { return qsizetype(random() % size_t(limit)); };
    for (int k = int(random() % 6); k >= 0; --k) {
        if (content.isEmpty())
            content = " ";
        const qsizetype at = below(content.size());
        switch (random() % 16) {
        case 0:
        case 1:
        case 2:
        case 3:
            content[at] = char(random());
            break;
        case 4:
        case 5:
        case 6:
            content[at] = char(content[at] ^ (1 << random() % 8));
            break;
        case 7:
        case 8:
        case 9: {
            const QByteArray& word = words.at(below(words.size()));
            content.replace(at, random() % 2 ? word.size() : 0, word);
            break;
        }
        case 10:
        case 11:
            content.remove(at, 1 + below(8));
            break;
        case 12:
            content.remove(at, 1 + below(content.size()));
            break;
        case 13:
            content.insert(at, content.mid(below(content.size())));
            break;
        default:
            content.insert(at, content.mid(below(content.size()), below(60)));
        }
    }
    return content;
}
