// Base of the tests of translations.

#pragma once

#include "support/Printers.h"

#include <ZORNesting/ZORNestResult.h>
#include <ZORNesting/ZORNestTranslationInput.h>

#include <QByteArray>
#include <QList>
#include <QStringList>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <functional>
#include <utility>

class ZORWorkContext;

/// Translates files by a provider, as a job does.
class TranslationTest : public testing::Test
{
protected:
    explicit TranslationTest(const QByteArray& providerId)
        : provider(providerId)
    {
    }

    /// The content as a file "drawing.src". A failure leaves \a failure and no results.
    QList<ZORNestResult> Translate(const QByteArray& content);
    QList<ZORNestResult> TranslateFile(const QString& path);
    /// Checks that each content fails for its reason.
    void ExpectFailures(const QList<std::pair<QByteArray, QString>>& contents);
    /// Runs a function as a job and returns the reason of its failure, else an empty text.
    static QString RunAsJob(const std::function<void(const ZORWorkContext&)>& function);
    /// Writes the content to the file that Translate() reads.
    QString Write(const QByteArray& content) const;

    /// Of all shapes of a part in order: "outline", "hole" or "mark", and a word for each segment:
    /// L(x y), A+(x y | xc yc) counter-clockwise, A-(...) clockwise, S<number of pieces>(x y), T(x y text),
    /// with the start at first: "outline (0 0) L(1 0) ...".
    static QStringList Describe(const ZORNestResult& result);
    static QString Describe(const ZORNestResultShape& shape);
    static const ZORNestResultItem& GetItem(const ZORNestResult& result)
    {
        return *result.GetItems().constFirst();
    }
    static const ZORNestResultShape& GetShape(const ZORNestResult& result, int index = 0)
    {
        return *GetItem(result).GetShapes().at(index);
    }
    /// Outline less holes.
    static double GetArea(const ZORNestResult& result);
    /// Translates the content, which must make one part, and returns its area.
    double GetOnlyArea(const QByteArray& content);

    const QByteArray provider;
    ZORNestTranslationInput input;
    QString failure;
    QStringList report;
    const QTemporaryDir directory;
};

/// "0|LINE|10|1.5" as lines; a final bar ends the last one.
QByteArray Lines(const QByteArray& text);
