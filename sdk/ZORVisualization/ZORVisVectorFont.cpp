#include "ZORVisVectorFont.h"

#include "text/ZORVisStrokeFont_p.h"

#include <ZORSystem/ZORSysApiTrace.h>

#include <QDir>
#include <QFile>
#include <QHash>
#include <QMutex>

#include <algorithm>

namespace {

constexpr QLatin1String kFolder(":/ZORVisualization/vectorfonts/");
constexpr QLatin1String kSuffix(".jhf");

/// Fonts that were asked for stay in memory.
class FontStore
{
public:
    FontStore()
    {
        m_names = QDir(kFolder).entryList({u'*' + kSuffix}, QDir::Files);
        for (QString& name : m_names)
            name.chop(kSuffix.size());
        std::sort(m_names.begin(), m_names.end());
    }

    static FontStore& GetInstance()
    {
        static FontStore store;
        return store;
    }

    QStringList GetNames() const { return m_names; }

    std::shared_ptr<const ZORVisStrokeFont> GetFont(const QString& name)
    {
        const QMutexLocker lock(&m_mutex);
        std::shared_ptr<const ZORVisStrokeFont>& font = m_fonts[name];
        if (!font)
            font = std::make_shared<ZORVisStrokeFont>(Read(name));
        return font;
    }

private:
    static QByteArray Read(const QString& name)
    {
        QFile file(kFolder + name + kSuffix);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QStringList m_names;
    QMutex m_mutex;
    QHash<QString, std::shared_ptr<const ZORVisStrokeFont>> m_fonts;
};

} // namespace

ZORVisVectorFont::ZORVisVectorFont(const QString& name)
{
    ZOR_TRACE_CALL(name);
    FontStore& store = FontStore::GetInstance();
    const QStringList names = store.GetNames();
    m_name = names.contains(name) ? name : names.constFirst();
    m_font = store.GetFont(m_name);
}

QStringList ZORVisVectorFont::GetFontNames()
{
    return FontStore::GetInstance().GetNames();
}

void ZorTraceAppend(QByteArray& out, const ZORVisVectorFont& font)
{
    ZorTraceAppend(out, font.m_name);
}
