// Finds what a ray through a pixel meets.

#pragma once

class ZORVisPointPicker
{
};

class ZORVisMeshPicker
{
};
