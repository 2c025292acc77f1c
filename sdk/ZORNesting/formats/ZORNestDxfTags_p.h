// The pairs of lines that an ASCII DXF file consists of.

#pragma once

#include "drawing/ZORNestPlane_p.h"

#include <QByteArrayView>
#include <QCoreApplication>
#include <QString>

#include <vector>

/// A group code and its value, without line ends.
struct ZORNestDxfTag
{
    int code = 0;
    QByteArrayView value; ///< into the file's bytes
    qint64 line = 0;      ///< of the value, from 1
};

/// Reads pair after pair. Every malformation throws ZORSysException "line %1: ..." with the number of the
/// line.
class ZORNestDxfTags
{
    Q_DECLARE_TR_FUNCTIONS(ZORNestDxfTags)

public:
    /// \param bytes  not owned; have to outlive the reader and its tags
    explicit ZORNestDxfTags(QByteArrayView bytes)
        : m_bytes(bytes)
    {
    }

    /// \return false at the end of the file
    /// \throws ZORSysException "line %1: group code expected", "line %1: value missing"
    bool Read(ZORNestDxfTag& tag);

    /// A place between two pairs, to come back to.
    struct Position
    {
        qsizetype offset = 0;
        qint64 line = 0;
    };
    Position GetPosition() const { return m_position; }
    /// Before the pair that was read last.
    Position GetPositionOfLast() const { return m_last; }
    void SetPosition(Position position) { m_position = position; }

private:
    QByteArrayView ReadLine();

    QByteArrayView m_bytes;
    Position m_position;
    Position m_last;
};

/// What belongs to one entity, block or table entry: everything between two pairs of code 0.
class ZORNestDxfRecord
{
public:
    /// Pairs of one record.
    static constexpr size_t kMaximumTags = 8000000;

    /// Reads from behind the pair of code 0 up to the next one or the end of the file.
    /// \param type  that pair
    /// \param next  receives the following pair of code 0
    /// \return false when the file has ended
    /// \throws ZORSysException "line %1: entity has too many values"
    bool Read(ZORNestDxfTags& tags, const ZORNestDxfTag& type, ZORNestDxfTag& next);

    QByteArrayView GetType() const { return m_type.value; }
    bool Is(const char* type) const { return m_type.value == type; }
    qint64 GetLine() const { return m_type.line; }
    const std::vector<ZORNestDxfTag>& GetTags() const { return m_tags; }

    /// The first value of a code. Numbers throw ZORSysException "line %1: number expected" when they are none
    /// or not finite.
    double GetNumber(int code, double fallback = 0) const;
    int GetInteger(int code, int fallback = 0) const;
    QByteArrayView GetValue(int code) const;
    bool Has(int code) const { return Find(code) != nullptr; }
    /// The point of \a code and \a code + 10.
    ZORNestPlanePoint GetPoint(int code) const { return {GetNumber(code), GetNumber(code + 10)}; }

    static double ToNumber(const ZORNestDxfTag& tag);
    static int ToInteger(const ZORNestDxfTag& tag);
    /// Decodes UTF-8, or Latin 1 where the bytes are not UTF-8, and resolves "\U+XXXX".
    static QString ToText(QByteArrayView value);

private:
    const ZORNestDxfTag* Find(int code) const;

    ZORNestDxfTag m_type;
    std::vector<ZORNestDxfTag> m_tags;
};
