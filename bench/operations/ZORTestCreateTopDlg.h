// Base of the test dialogs that make topological bodies.

#pragma once

#include "core/ZORTestDialog.h"
#include "core/ZORTestEnvironment.h"
#include "widgets/ZORTestGeometrySelector.h"

#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatEnvironment.h>
#include <ZORTopology/ZORTopFactory.h>

class QDoubleSpinBox;

/// Asks for a geometry and an edge tolerance, which the settings keep in radians, and adds the body of the geometry.
class ZORTestCreateTopDlg : public ZORTestDialog
{
    Q_OBJECT

protected:
    /// Creates a dialog without a form.
    /// \param group  the group of "Debug" in which the settings keep the tolerance
    ZORTestCreateTopDlg(ZORTestEnvironment* environment, const char* group);

    /// Builds the form; to be called in the constructor of the concrete class, whose "label" becomes the title.
    /// \param selector  object name
    /// \param geoType   the class of the geometries that can be selected
    void BuildForm(const char* selector, const QString& caption, const char* geoType);

    /// Adds the body of the selected geometry.
    /// \param message  shown when no geometry of this class is selected
    template<class Geometry>
    bool CreateBody(ZORTopBody* (ZORTopFactory::*make)(const Geometry*, double), const QString& message)
    {
        const auto* geometry = Require<Geometry>(m_selector, message);
        if (!geometry)
            return false;
        const double tolerance = StoreTolerance();
        ZORTopFactory factory(GetEnvironment()->GetEnvironment()->GetContainer());
        return (factory.*make)(geometry, tolerance) != nullptr;
    }

private:
    double StoreTolerance() const;

    const char* const m_group;
    ZORTestGeometrySelector* m_selector = nullptr;
    QDoubleSpinBox* m_toleranceSpin = nullptr; // degrees
};
