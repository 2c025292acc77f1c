// The providers of the library.

#pragma once

#include <QByteArray>

#include <memory>
#include <vector>

class ZORNestSourceProvider;

std::vector<std::unique_ptr<ZORNestSourceProvider>> ZORNestMakeSourceProviders();

/// Whether \a providerId is that of a provider of the library, which every process has that loads it. Thread-safe.
bool ZORNestIsOwnProvider(const QByteArray& providerId);
