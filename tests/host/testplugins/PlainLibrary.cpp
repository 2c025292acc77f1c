// A shared library that is no Qt plug-in.

extern "C" int PlainLibraryFunction()
{
    return 42;
}
