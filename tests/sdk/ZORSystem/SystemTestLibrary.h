// Signatures of the functions of the library that the tests load and unload.

#pragma once

class QString;

using ZorTestRecordStackFunction = void (*)();
using ZorTestThrowFileOpenFunction = void (*)(const QString& path);
using ZorTestRegisterInitFunction = void (*)(int* counter);
