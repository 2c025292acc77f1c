// A plug-in without contents; its metadata is what the tests are after.

#include <QObject>

#ifdef TEST_MISSING_SYMBOL
extern "C" void ThisFunctionIsNowhereDefined();
#endif

class InertPlugin : public QObject
{
    Q_OBJECT
#if defined(TEST_FOREIGN)
    Q_PLUGIN_METADATA(IID "org.example.OtherProgram" FILE "inert.json")
#elif defined(TEST_OTHER_MAJOR)
    Q_PLUGIN_METADATA(IID "org.zorvane.sdk.Plugin" FILE "othermajor.json")
#elif defined(TEST_NO_VERSION)
    Q_PLUGIN_METADATA(IID "org.zorvane.sdk.Plugin" FILE "noversion.json")
#else
    Q_PLUGIN_METADATA(IID "org.zorvane.sdk.Plugin" FILE "inert.json")
#endif

public:
#ifdef TEST_MISSING_SYMBOL
    Q_INVOKABLE InertPlugin()
    {
        ThisFunctionIsNowhereDefined();
    }
#else
    Q_INVOKABLE InertPlugin() = default;
#endif
};

#ifdef TEST_OTHER_MAJOR
namespace {

/// Loading this library would end the program: a test proves that it is never mapped.
const int kMapped = [] {
    qFatal("the library of another SDK version was loaded");
    return 0;
}();

} // namespace
#endif

#include "InertPlugin.moc"
