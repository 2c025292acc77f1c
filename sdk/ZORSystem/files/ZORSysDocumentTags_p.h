// Tags of the numbers in documents.

#pragma once

#include <QCborValue>

constexpr QCborTag kInt32Tag{78};
constexpr QCborTag kFloat64Tag{86};
