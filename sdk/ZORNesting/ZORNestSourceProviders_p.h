// The providers of the library.

#pragma once

#include <memory>
#include <vector>

class ZORNestSourceProvider;

std::vector<std::unique_ptr<ZORNestSourceProvider>> ZORNestMakeSourceProviders();
