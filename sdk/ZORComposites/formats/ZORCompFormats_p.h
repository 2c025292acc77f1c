// The formats of this library.

#pragma once

class ZORCompFormat;

const ZORCompFormat& ZorCompJsonFormat();
const ZORCompFormat& ZorCompXmlFormat();
