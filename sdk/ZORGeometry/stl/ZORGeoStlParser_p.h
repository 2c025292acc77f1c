// Parses the bytes of an STL file, binary or ASCII.

#pragma once

#include "ZORGeoStlSolid_p.h"

#include <QByteArrayView>

#include <string_view>
#include <vector>

class ZORGeoStlContent;

/// Turns STL content into solids; knows no devices and no containers.
class ZORGeoStlParser
{
public:
    /// Bytes of binary content: the header with the number of facets in its last four bytes, and each facet.
    static constexpr qint64 kHeaderSize = 84;
    static constexpr qint64 kFacetSize = 50;

    /// \param factor   millimetres a unit of the file
    /// \param report   filled while parsing
    /// \param content  at its start; not owned
    ZORGeoStlParser(double factor, ZORGeoStlReport& report, ZORGeoStlContent& content);

    /// \return solids with at least one triangle; none for empty content and empty solids
    /// \throws ZORSysFileException when there is content, but no usable facet, or when it cannot be STL
    std::vector<ZORGeoStlSolid> Parse();

private:
    enum class Form { Binary, Ascii, Utf16 };
    Form FindForm();

    void ParseBinary();
    void RefuseForeignContent(qint64 announced, qint64 present);
    template<class Function>
    qint64 ForEachBinaryFacet(qint64 maximum, const Function& function);
    void ParseAscii();
    void ParseStatement(std::string_view keyword, const char*& at, const char* end);
    void ParseVertex(const char*& at, const char* end);
    void BeginSolid(const char*& at, const char* end);
    void EndFacet();
    void EndSolid();

    const double m_factor;
    ZORGeoStlReport& m_report;
    ZORGeoStlContent& m_content;
    std::vector<ZORGeoStlSolid> m_solids;

    bool m_hasContent = false; // something but empty solids
    ZORGeoStlSolidBuilder m_builder;
    QString m_name; // of the solid
    bool m_inSolid = false;
    bool m_inFacet = false;
    bool m_isReadable = true; // the facet's coordinates, so far
    int m_corners = 0;        // of the facet, so far
    std::array<quint32, 9> m_coordinates = {};
};
