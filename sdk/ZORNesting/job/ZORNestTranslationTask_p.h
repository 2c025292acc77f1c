// What a translation job gets and what it returns.

#pragma once

#include <ZORNesting/ZORNestTranslationInput.h>

#include <QString>
#include <QStringList>

#include <optional>

/// What a translation job needs to know.
struct ZORNestTranslationTask
{
    ZORNestTranslationInput input;
    QString path;
    bool isKept = false; ///< whether the work directory gets a second copy of the part files
};

/// What came of a translation job besides its files.
struct ZORNestTranslationOutcome
{
    QStringList report;             ///< the lines of ZORNestTranslationResponse::GetReport()
    std::optional<QString> failure; ///< why the source could not be translated
};
