// Reads ASCII DXF files.

#pragma once

#include "ZORNestDxfTags_p.h"
#include "drawing/ZORNestDrawing_p.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QHash>
#include <QStringList>

class ZORWorkContext;

/// Draws what the model space of an ASCII DXF file (R12 to 2018) shows, in millimetres.
///
/// LINE, ARC, CIRCLE, ELLIPSE, LWPOLYLINE, POLYLINE (without meshes), SPLINE, TEXT, MTEXT, ATTRIB and INSERT,
/// each as seen from above: heights are dropped. Blocks may be scaled, turned, mirrored and in arrays. Other
/// entities, and those on layers that are off or frozen, are left out and counted. Units come from $INSUNITS,
/// else from $MEASUREMENT (0: inches); without both they are millimetres.
class ZORNestDxfReader
{
    Q_DECLARE_TR_FUNCTIONS(ZORNestDxfReader)

public:
    /// How deep blocks may lie in blocks.
    static constexpr int kMaximumDepth = 32;
    /// How many entities a drawing may have after blocks are inserted: at most that many, and no more than those of a
    /// small file and one more for each 8 bytes of it, since a file of a few lines can insert millions.
    static constexpr qint64 kMaximumEntities = 4'000'000;
    static constexpr qint64 kMaximumEntitiesOfSmallFile = 250'000;
    /// How many bytes of the file inserted blocks may read again, in all: the same with 100 for each byte.
    static constexpr qint64 kMaximumBlockBytes = qint64(1) << 30;
    static constexpr qint64 kMaximumBlockBytesOfSmallFile = qint64(64) << 20;

    /// \param bytes   the whole file; not owned, has to outlive the reader
    /// \param report  not owned; gets a line about the units
    ZORNestDxfReader(QByteArrayView bytes, ZORNestDrawing& drawing, QStringList& report,
                     const ZORWorkContext& context);

    /// \throws ZORSysException "binary DXF cannot be read, only ASCII DXF", "no DXF file: SECTION is
    ///         missing", "file is incomplete: EOF is missing", "line %1: ...", or what tells that a maximum
    ///         is exceeded
    void Read();

private:
    struct Block
    {
        ZORNestDxfTags::Position entities;
        ZORNestPlanePoint base;
    };
    struct Layer
    {
        QColor color;
        bool isVisible = true;
    };
    /// Where and how entities are drawn.
    struct Place
    {
        ZORNestPlaneMap map;
        QString layer; ///< of the block's reference: for entities on layer "0"
        QColor color;  ///< of the block's reference: for entities coloured "by block"
        int depth = 0;
    };

    void ReadHeader(ZORNestDxfTag& tag);
    void ReadTables(ZORNestDxfTag& tag);
    void ReadBlocks(ZORNestDxfTag& tag);
    void SkipSection(ZORNestDxfTag& tag);
    void SetUnits(int insertUnits, int measurement);
    /// Draws up to the next pair of code 0 whose value is \a end.
    void ReadEntities(ZORNestDxfTag& tag, const char* end, const Place& place);
    /// Reads one record from behind its pair of code 0, and the following pair.
    void ReadRecord(ZORNestDxfRecord& record, ZORNestDxfTag& tag);
    /// Reads the next record of a type in the section, and the following pair.
    /// \return false at the end of the section, which \a tag holds then, or of the file
    bool ReadNext(const char* type, ZORNestDxfRecord& record, ZORNestDxfTag& tag);
    /// \param look  null: it is not drawn
    void ReadPolyline(const ZORNestDxfRecord& polyline, ZORNestDxfTag& tag, const Place& place,
                      const ZORNestLook* look);
    void Insert(const ZORNestDxfRecord& record, const Place& place, const ZORNestLook& look);
    void InsertBlock(const Block& block, const Place& place);
    ZORNestLook GetLook(const ZORNestDxfRecord& record, const Place& place) const;
    bool IsVisible(const ZORNestDxfRecord& record, const QString& layer);
    void CountEntity();

    ZORNestDxfTags m_tags;
    const qsizetype m_size;
    const qint64 m_mostEntities;
    const qint64 m_mostBlockBytes;
    ZORNestDrawing& m_drawing;
    QStringList& m_report;
    const ZORWorkContext& m_context;
    QHash<QString, Block> m_blocks; // by name in capitals
    QHash<QString, Layer> m_layers; // by name in capitals
    double m_unit = 1;              // in millimetres
    bool m_hasUnits = false;
    qint64 m_entities = 0;
    qint64 m_blockBytes = 0; // read by insertions
};
