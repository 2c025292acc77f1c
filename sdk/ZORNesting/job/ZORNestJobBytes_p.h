// What nesting and translation jobs and their callers exchange, as bytes.

#pragma once

#include "ZORNestNestingTask_p.h"
#include "ZORNestTranslationTask_p.h"

#include <ZORNesting/ZORNestingGlobal.h>

#include <QByteArray>

/// Writes and reads the bytes. They are read by the same version of the SDK only, each document starts with its name and
/// version, doubles keep their bits. Texts keep what UTF-8 can hold.
///
/// Readers take bytes of any content: they allocate no more than what the bytes hold. Indices and numbers are whatever
/// they are; a solution has yet to be proved.
/// \throws ZORSysFileException "%1 is damaged: unexpected content at byte %2 of the document" (%1: "nesting task",
///         "nesting outcome", "nesting layout", "translation task", "translation outcome")
namespace ZORNestJobBytes {

ZORNESTING_EXPORT QByteArray Write(const ZORNestNestingTask& task);
ZORNESTING_EXPORT ZORNestNestingTask ReadNestingTask(const QByteArray& bytes);

ZORNESTING_EXPORT QByteArray Write(const ZORNestNestingOutcome& outcome);
ZORNESTING_EXPORT ZORNestNestingOutcome ReadNestingOutcome(const QByteArray& bytes);

ZORNESTING_EXPORT QByteArray Write(const ZORNestInterimLayout& layout);
ZORNESTING_EXPORT ZORNestInterimLayout ReadInterimLayout(const QByteArray& bytes);

ZORNESTING_EXPORT QByteArray Write(const ZORNestTranslationTask& task);
ZORNESTING_EXPORT ZORNestTranslationTask ReadTranslationTask(const QByteArray& bytes);

ZORNESTING_EXPORT QByteArray Write(const ZORNestTranslationOutcome& outcome);
ZORNESTING_EXPORT ZORNestTranslationOutcome ReadTranslationOutcome(const QByteArray& bytes);

} // namespace ZORNestJobBytes
