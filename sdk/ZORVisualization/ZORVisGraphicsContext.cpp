#include "ZORVisGraphicsContext.h"

#include <ZORSystem/ZORSysMemory.h>

#include <QLoggingCategory>
#include <QStringList>
#include <QThread>

#define GL_GLEXT_PROTOTYPES
#define EGL_NO_X11
#include <EGL/egl.h>
#include <EGL/eglext.h>
#include <GL/gl.h>
#include <GL/glext.h>
#include <Inventor/SoDB.h>
#include <Inventor/errors/SoDebugError.h>
#include <algorithm>
#include <array>

Q_LOGGING_CATEGORY(zorVisLog, "zor.visualization", QtWarningMsg)

namespace {

constexpr int kWantedSamples = 4;
constexpr qint64 kNeededAddresses = qint64(1) << 30; // bytes; software drawing takes 600 MB of them

// Coin reports, among real errors, that it finds no GLX, which is not used here.
void LogCoinMessage(const SoError* error, void*)
{
    const bool isError =
        static_cast<const SoDebugError*>(error)->getSeverity() == SoDebugError::ERROR; // only these reach us
    if (isError)
        qCWarning(zorVisLog, "%s", error->getDebugString().getString());
    else
        qCDebug(zorVisLog, "%s", error->getDebugString().getString());
}

QString EglError()
{
    return ZORVisGraphicsContext::tr("EGL error 0x%1").arg(eglGetError(), 4, 16, QLatin1Char('0'));
}

QString GlString(GLenum name)
{
    const GLubyte* string = glGetString(name);
    return string ? QString::fromUtf8(reinterpret_cast<const char*>(string)) : QString();
}

QList<EGLDeviceEXT> FindDevices()
{
    const auto queryDevices =
        reinterpret_cast<PFNEGLQUERYDEVICESEXTPROC>(eglGetProcAddress("eglQueryDevicesEXT"));
    EGLint count = 0;
    if (!queryDevices || !queryDevices(0, nullptr, &count) || count <= 0)
        return {};
    QList<EGLDeviceEXT> devices(count);
    if (!queryDevices(count, devices.data(), &count))
        return {};
    devices.resize(count);
    return devices;
}

} // namespace

class ZORVisGraphicsContext::Private
{
public:
    void Create();
    /// What a context is made for.
    enum class Target { NoSurface, Surface };
    bool TryDisplay(const QString& name, EGLDisplay candidate, Target target);
    QString CreateContext(Target target);
    QString ReadLimits();
    void Release();

    EGLDisplay display = EGL_NO_DISPLAY;
    EGLContext context = EGL_NO_CONTEXT;
    EGLSurface surface = EGL_NO_SURFACE;
    Qt::HANDLE thread = nullptr;
    int maximumSize = 0;
    int samples = 1;
    bool software = false;
    QStringList reasons;
    QString description; // empty for software drawing
};

void ZORVisGraphicsContext::Private::Create()
{
    if (qEnvironmentVariableIntValue("ZOR_NO_GRAPHICS") == 1) {
        reasons << ZORVisGraphicsContext::tr(
            "graphics are switched off by the environment variable ZOR_NO_GRAPHICS");
        return;
    }
    // Drivers do not survive the end of the memory, and software drawing reserves most addresses of all.
    if (const qint64 available = ZORSysMemory::GetAvailableAddresses(); available < kNeededAddresses) {
        const auto [needed, left] = ZORSysMemory::FormatSizes(kNeededAddresses, available);
        reasons << ZORVisGraphicsContext::tr("graphics need %1 of address space, only %2 are left")
                       .arg(needed, left);
        return;
    }
    thread = QThread::currentThreadId();

    bool made = TryDisplay(ZORVisGraphicsContext::tr("EGL without surface"),
                           eglGetPlatformDisplay(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr),
                           Target::NoSurface);
    if (!made) {
        const QList<EGLDeviceEXT> devices = FindDevices();
        for (int i = 0; !made && i < devices.size(); ++i) {
            made = TryDisplay(ZORVisGraphicsContext::tr("EGL device %1").arg(i),
                              eglGetPlatformDisplay(EGL_PLATFORM_DEVICE_EXT, devices[i], nullptr),
                              Target::NoSurface);
        }
    }
    if (!made)
        made = TryDisplay(ZORVisGraphicsContext::tr("EGL default display"),
                          eglGetDisplay(EGL_DEFAULT_DISPLAY), Target::Surface);
    if (!made)
        return;

    reasons.clear();
    SoDB::init();
    SoDebugError::setHandlerCallback(LogCoinMessage, nullptr);
}

bool ZORVisGraphicsContext::Private::TryDisplay(const QString& name, EGLDisplay candidate, Target target)
{
    const auto fail = [&](const QString& reason) {
        reasons << name + QStringLiteral(": ") + reason;
        Release();
        return false;
    };
    if (candidate == EGL_NO_DISPLAY)
        return fail(ZORVisGraphicsContext::tr("no such display"));
    EGLint major = 0;
    EGLint minor = 0;
    if (!eglInitialize(candidate, &major, &minor))
        return fail(ZORVisGraphicsContext::tr("cannot be initialised, %1").arg(EglError()));
    display = candidate;
    QString reason = CreateContext(target);
    if (reason.isEmpty())
        reason = ReadLimits();
    if (!reason.isEmpty())
        return fail(reason);
    description = ZORVisGraphicsContext::tr("%1; %2; OpenGL %3; %4 samples per pixel")
                      .arg(name, GlString(GL_RENDERER), GlString(GL_VERSION), QString::number(samples));
    return true;
}

// Empty, or why it failed.
QString ZORVisGraphicsContext::Private::CreateContext(Target target)
{
    if (!eglBindAPI(EGL_OPENGL_API))
        return ZORVisGraphicsContext::tr("no desktop OpenGL");
    EGLConfig config = EGL_NO_CONFIG_KHR;
    if (target == Target::Surface) {
        const std::array<EGLint, 5> wanted = {EGL_SURFACE_TYPE, EGL_PBUFFER_BIT, EGL_RENDERABLE_TYPE,
                                              EGL_OPENGL_BIT, EGL_NONE};
        EGLint count = 0;
        if (!eglChooseConfig(display, wanted.data(), &config, 1, &count) || count == 0)
            return ZORVisGraphicsContext::tr("no configuration for desktop OpenGL");
        const std::array<EGLint, 5> size = {EGL_WIDTH, 1, EGL_HEIGHT, 1, EGL_NONE};
        surface = eglCreatePbufferSurface(display, config, size.data());
        if (surface == EGL_NO_SURFACE)
            return ZORVisGraphicsContext::tr("no buffer, %1").arg(EglError());
    }
    context = eglCreateContext(display, config, EGL_NO_CONTEXT, nullptr);
    if (context == EGL_NO_CONTEXT)
        return ZORVisGraphicsContext::tr("no context, %1").arg(EglError());
    if (!eglMakeCurrent(display, surface, surface, context))
        return ZORVisGraphicsContext::tr("the context cannot be made current, %1").arg(EglError());
    return {};
}

// Empty, or what is missing.
QString ZORVisGraphicsContext::Private::ReadLimits()
{
    const QString version = GlString(GL_VERSION);
    if (version.section(QLatin1Char('.'), 0, 0).toInt() < 3)
        return ZORVisGraphicsContext::tr("OpenGL 3.0 is needed, this is \"%1\"").arg(version);
    glMatrixMode(GL_MODELVIEW); // an error in core profiles
    if (glGetError() != GL_NO_ERROR)
        return ZORVisGraphicsContext::tr("no compatibility profile of OpenGL");
    GLint renderbufferSize = 0;
    std::array<GLint, 2> viewportSize = {0, 0};
    GLint maximumSamples = 0;
    glGetIntegerv(GL_MAX_RENDERBUFFER_SIZE, &renderbufferSize);
    glGetIntegerv(GL_MAX_VIEWPORT_DIMS, viewportSize.data());
    glGetIntegerv(GL_MAX_SAMPLES, &maximumSamples);
    const QString renderer = GlString(GL_RENDERER);
    software = renderer.contains(QStringLiteral("llvmpipe")) || renderer.contains(QStringLiteral("softpipe"))
               || renderer.contains(QStringLiteral("swrast"));
    maximumSize = std::min({renderbufferSize, viewportSize[0], viewportSize[1]});
    samples = std::clamp(maximumSamples, 1, kWantedSamples);
    return maximumSize > 0 ? QString() : ZORVisGraphicsContext::tr("no framebuffers");
}

void ZORVisGraphicsContext::Private::Release()
{
    if (display == EGL_NO_DISPLAY)
        return;
    eglMakeCurrent(display, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
    if (context != EGL_NO_CONTEXT)
        eglDestroyContext(display, context);
    if (surface != EGL_NO_SURFACE)
        eglDestroySurface(display, surface);
    eglTerminate(display);
    display = EGL_NO_DISPLAY;
    context = EGL_NO_CONTEXT;
    surface = EGL_NO_SURFACE;
}

ZORVisGraphicsContext::ZORVisGraphicsContext()
    : d(std::make_unique<Private>())
{
    d->Create();
}

ZORVisGraphicsContext::~ZORVisGraphicsContext() = default;

ZORVisGraphicsContext* ZORVisGraphicsContext::GetInstance()
{
    // Never destroyed: scenes of static objects may still release buffers at the end of the process.
    static ZORVisGraphicsContext* const instance = new ZORVisGraphicsContext;
    return instance;
}

bool ZORVisGraphicsContext::IsAvailable() const
{
    return d->context != EGL_NO_CONTEXT;
}

QString ZORVisGraphicsContext::GetFailureReason() const
{
    return d->reasons.join(QLatin1Char('\n'));
}

QString ZORVisGraphicsContext::GetDescription() const
{
    return d->description.isEmpty() ? tr("software drawing") : d->description;
}

bool ZORVisGraphicsContext::MakeCurrent() const
{
    if (!IsAvailable() || QThread::currentThreadId() != d->thread)
        return false;
    return eglGetCurrentContext() == d->context
           || eglMakeCurrent(d->display, d->surface, d->surface, d->context);
}

int ZORVisGraphicsContext::GetMaximumSize() const
{
    return d->maximumSize;
}

int ZORVisGraphicsContext::GetSamples() const
{
    return d->samples;
}

bool ZORVisGraphicsContext::IsSoftware() const
{
    return d->software;
}
