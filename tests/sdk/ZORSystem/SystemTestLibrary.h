// Signatures of the functions of the library that the tests load and unload.

#pragma once

class QString;

using ZorTestRecordStackFunction = void (*)();
using ZorTestThrowFileOpenFunction = void (*)(const QString& path);
/// Tells what \a function threw: "file: message", "sdk: message" or "none".
using ZorTestCatchFunction = QString (*)(void (*function)());
using ZorTestRegisterInitFunction = void (*)(int* counter);
