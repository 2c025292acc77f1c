#include "base/ZORHostPreferences.h"

#include "base/ZORHostSettings.h"

#include <algorithm>

namespace {

constexpr char kAutosaveMinutes[] = "AutosaveMinutes";
constexpr char kShowEverythingNew[] = "ShowEverythingNew";
constexpr int kDefaultAutosaveMinutes = 5;

} // namespace

ZORHostPreferences* ZORHostPreferences::Get()
{
    static ZORHostPreferences preferences;
    return &preferences;
}

int ZORHostPreferences::GetAutosaveMinutes() const
{
    bool isNumber = false;
    const int minutes = ZORHostSettings::Read(kAutosaveMinutes, kDefaultAutosaveMinutes).toInt(&isNumber);
    return isNumber ? std::clamp(minutes, 0, kMostAutosaveMinutes) : kDefaultAutosaveMinutes;
}

void ZORHostPreferences::SetAutosaveMinutes(int minutes)
{
    Write(kAutosaveMinutes, std::clamp(minutes, 0, kMostAutosaveMinutes));
}

bool ZORHostPreferences::ShowsEverythingNew() const
{
    return ZORHostSettings::Read(kShowEverythingNew, false).toBool();
}

void ZORHostPreferences::SetShowsEverythingNew(bool shows)
{
    Write(kShowEverythingNew, shows);
}

void ZORHostPreferences::Write(const QString& key, const QVariant& value)
{
    if (ZORHostSettings::Read(key) == value)
        return;
    ZORHostSettings::Write(key, value);
    emit Changed();
}
