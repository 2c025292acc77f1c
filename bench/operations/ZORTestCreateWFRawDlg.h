// Base of the test dialogs that make raw features.

#pragma once

#include "core/ZORTestDialog.h"
#include "widgets/ZORTestGeometrySelector.h"

#include <ZORFeature/ZORFeatFolder.h>

/// Asks for a geometry and a folder, and adds a feature around the geometry to the folder.
class ZORTestCreateWFRawDlg : public ZORTestDialog
{
    Q_OBJECT

protected:
    using ZORTestDialog::ZORTestDialog;

    /// Builds the form; to be called in the constructor of the concrete class.
    /// \param selector  object name
    /// \param geoType   the class of the geometries that can be selected
    void BuildForm(const QString& title, const char* selector, const QString& caption, const char* geoType);

    /// Adds a \a Feature around the selected geometry.
    /// \param message  shown when no \a Geometry is selected
    template<class Feature, class Geometry>
    bool CreateFeature(const QString& message)
    {
        const auto* geometry = Require<Geometry>(m_geometrySel, message);
        if (!geometry)
            return false;
        ZORFeatFolder* folder = RequireFolder();
        if (!folder)
            return false;
        Create<Feature>(folder, geometry);
        return true;
    }

private:
    ZORFeatFolder* RequireFolder();

    ZORTestGeometrySelector* m_geometrySel = nullptr;
    ZORTestGeometrySelector* m_folderSel = nullptr;
};
