// Tags of the numbers in documents.

#pragma once

#include <QCborValue>

constexpr QCborTag zorInt32Tag{78};
constexpr QCborTag zorFloat64Tag{86};
