// Faults of the operating system that a healthy machine does not show.

#pragma once

/// What the functions of the C library do in this program; as ever until something is set. Everything is reset when an
/// object of this class is destroyed.
struct SystemCallFaults
{
    ~SystemCallFaults();

    /// pwrite() fails for lack of space at the call of this number, from 0, and at the next ones; negative: never.
    static int firstFailure;
    /// Number of calls of pwrite() that fail.
    static int failures;
    /// Number of calls of pread() so far.
    static int reads;
    /// read() fails for a fault of the device.
    static bool cannotRead;
    /// open() knows no unnamed files, as on network drives.
    static bool hasNoUnnamedFiles;
};
