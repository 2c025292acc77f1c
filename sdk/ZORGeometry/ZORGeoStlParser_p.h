// Parses the bytes of an STL file, binary or ASCII.

#pragma once

#include "ZORGeoStlSolid_p.h"

#include <QByteArrayView>

#include <functional>
#include <string_view>
#include <vector>

/// Turns STL content into solids; knows no devices and no containers.
class ZORGeoStlParser
{
public:
    /// \param factor   millimetres a unit of the file
    /// \param report   filled while parsing
    /// \param release  told from time to time up to which byte the content was read and is not
    ///                 needed any more
    ZORGeoStlParser(double factor, ZORGeoStlReport& report, std::function<void(qsizetype)> release);

    /// \return solids with at least one triangle; none for empty content and empty solids
    /// \throws ZORSysFileException when there is content, but no usable facet
    std::vector<ZORGeoStlSolid> Parse(QByteArrayView content);

private:
    enum class Form { Binary, Ascii, Utf16 };
    static Form FindForm(QByteArrayView content);

    void ParseBinary(QByteArrayView content);
    void ParseAscii(QByteArrayView content);
    void ParseStatement(std::string_view keyword, const char*& at, const char* end);
    void ParseVertex(const char*& at, const char* end);
    void BeginSolid(const char*& at, const char* end);
    void EndFacet();
    void EndSolid();

    const double m_factor;
    ZORGeoStlReport& m_report;
    const std::function<void(qsizetype)> m_release;
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
