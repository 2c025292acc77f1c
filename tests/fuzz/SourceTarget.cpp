// Source files give valid parts or a reason, by the provider ZOR_FUZZ_PROVIDER.

#include "FuzzTarget.h"

#include <ZORNesting/ZORNestResultItem.h>
#include <ZORNesting/ZORNestSourceProvider.h>
#include <ZORNesting/ZORNestTranslationInput.h>
#include <ZORSystem/ZORSysException.h>

#include <QFile>
#include <QTemporaryDir>

#include <cmath>

namespace {

void CheckPart(const ZORNestResult& part)
{
    Require(part.IsValid(), "a part is valid");
    Require(part.GetResultType() == ZORNestResult::Translation, "a part is of type translation");
    Require(part.GetItems().size() == 1, "a part has one item");
    for (const ZORNestResultShape* shape : part.GetItems().constFirst()->GetShapes())
        Require(std::isfinite(shape->GetArea()), "areas are finite");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static const QTemporaryDir folder;
    static const QString path = folder.filePath(QStringLiteral("drawing.src"));
    QFile file(path);
    Require(file.open(QIODevice::WriteOnly), "the temporary folder can be written");
    file.write(ToBytes(data, size));
    file.close();

    static const ZORNestSourceProvider* const provider =
        ZORNestSourceProvider::GetProvider(ZOR_FUZZ_PROVIDER);
    Require(provider != nullptr, "the provider exists");
    QStringList report;
    try {
        const QList<ZORNestResult> parts =
            provider->Translate(path, ZORNestTranslationInput(), GetJobContext(), &report);
        Require(!parts.isEmpty(), "a file without parts is refused");
        for (const ZORNestResult& part : parts)
            CheckPart(part);
    } catch (const ZORSysException& exception) {
        Require(!exception.GetMessage().isEmpty(), "a refusal has a reason");
    }
    return 0;
}
