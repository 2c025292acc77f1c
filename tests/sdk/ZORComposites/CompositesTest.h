// Fixture of the tests of composites features and their files.

#pragma once

#include "support/MessageOf.h"
#include "support/Printers.h"

#include <ZORComposites/ZORCompLayup.h>
#include <ZORComposites/ZORCompPly.h>
#include <ZORComposites/ZORCompReadReport.h>
#include <ZORComposites/ZORCompRoot.h>
#include <ZORComposites/ZORCompSequence.h>
#include <ZORFeature/ZORFeatContainer.h>

#include <QByteArray>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <functional>
#include <utility>

/// A container with a composites root.
class CompositesTest : public testing::Test
{
protected:
    CompositesTest();

    /// A registered feature.
    template<class Feature, class... Args>
    static Feature* Add(Args&&... args)
    {
        auto* const feature = new Feature(std::forward<Args>(args)...);
        feature->Initialize();
        return feature;
    }

    /// Path of a new file with that content.
    QString WriteFile(const QString& name, const QByteArray& content) const;
    static QByteArray ReadFile(const QString& path);
    /// Reads into the root and finalizes.
    ZORCompReadReport Read(const QString& path, const QByteArray& format, bool replaces = false);
    ZORCompReadReport ReadContent(const QByteArray& content, const QByteArray& format);
    /// What the XML writer makes of the root.
    QByteArray ToXml() const;
    /// The message of reading that content, which must be an exception of files; the part behind the file's name.
    QString FailureOf(const QByteArray& content, const QByteArray& format);

    /// The one layup below the root.
    ZORCompLayup* GetLayup() const;

    ZORFeatContainer container;
    ZORCompRoot* root;
    QTemporaryDir folder;
};

constexpr const char* kJsonId = "compost-json";
constexpr const char* kXmlId = "layup-xml";
