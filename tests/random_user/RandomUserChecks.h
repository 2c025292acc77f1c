// What has to hold whatever the user does.

#pragma once

/// Checks the document and the windows that show it; a failure ends the process. To be called from the
/// outermost event loop.
/// - Saved and loaded, the document has the same bytes, names, classes and reference counts.
/// - The rows of the bench's container table are the geometries of the document.
/// - No wait cursor is left.
void CheckDuringRandomUser();

/// Checks that the program, which has ended, has left no window, wait cursor or document behind.
void CheckAfterRandomUser();
