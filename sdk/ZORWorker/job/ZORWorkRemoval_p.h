// Removes directories without holding up their users.

#pragma once

#include <QTemporaryDir>

#include <chrono>
#include <memory>

/// Removes directories in a thread that serves the whole process: with hundreds of thousands of files that takes
/// seconds, and neither a window nor a job may wait for it. Safe to use from any thread.
namespace ZORWorkRemoval {

/// Hides a directory at once, and removes it soon; at once where it cannot be renamed or no thread can start.
/// \param kept  released when the directory is gone
void Remove(std::unique_ptr<QTemporaryDir> directory, const std::shared_ptr<const void>& kept);

/// Waits until everything is removed, or until the time is over.
void Await(std::chrono::milliseconds time);

} // namespace ZORWorkRemoval
