// Numbers of ASCII STL files.

#pragma once

/// STL files are separated by blanks, line ends and, in strange ones, control characters.
inline bool ZorGeoIsBlank(char c)
{
    return static_cast<unsigned char>(c) <= ' ';
}

inline void ZorGeoSkipBlanks(const char*& at, const char* end)
{
    while (at != end && ZorGeoIsBlank(*at))
        ++at;
}

/// Reads the float nearest to the decimal number that follows, after blanks; "nan" and "inf" are numbers too,
/// and numbers beyond the floats become infinite or zero.
/// \return false, with \a at unchanged but for blanks, where no number stands or something clings to it
bool ZorGeoReadFloat(const char*& at, const char* end, float& value);
