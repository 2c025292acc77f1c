// What the process holds, and what explains it.

#pragma once

#include <QString>

/// The memory of this process and the numbers of what takes it: "171.8 MB resident, 56.5 MB in use;
/// 12 geometries in 3.4 MB, 2 visual objects, 812 lines in docks, 4 windows of 380 widgets, 11 threads,
/// 13 open files".
///
/// Gives free memory of the heap back to the system first: what is kept for later says nothing about leaks.
/// Costs a save of the document into memory.
QString DescribeRandomUserMemory();
