#include "ZORGeoContainerLoader_p.h"
#include "ZORGeoContainerNames_p.h"

#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORGeometry/ZORGeoObjectStorage.h>
#include <ZORSystem/ZORSysFileException.h>

#include <QSet>
#include <QStringList>

ZORGeoContainerLoader::ZORGeoContainerLoader(ZORGeoContainer& container,
                                             const std::vector<ZORGeoStoredObject>& objects)
    : m_container(container)
    , m_objects(objects)
    , m_needs(objects.size())
    , m_made(objects.size())
    , m_isJoined(objects.size())
    , m_isOpen(objects.size())
{
}

ZORGeoContainerLoader::~ZORGeoContainerLoader()
{
    for (auto object = m_owned.rbegin(); object != m_owned.rend(); ++object) {
        if (*object)
            (*object)->Destroy();
    }
}

void ZORGeoContainerLoader::Make()
{
    FindStorages();
    for (size_t i = 0; i < m_objects.size(); ++i) {
        for (const auto& [key, numbers] : m_objects[i].references)
            m_needs[i] += numbers;
    }
    for (int i = 0; i < int(m_objects.size()); ++i)
        MakeWithReferences(i);
    for (int i = 0; i < int(m_objects.size()); ++i) {
        if (!m_isJoined[size_t(i)])
            Complete(i);
    }
}

void ZORGeoContainerLoader::FindStorages()
{
    QStringList unknown;
    QHash<QByteArray, const ZORGeoObjectStorage*> known;
    for (const ZORGeoStoredObject& object : m_objects) {
        auto found = known.constFind(object.className);
        if (found == known.constEnd()) {
            const auto* storage = ZORGeoObjectStorage::Find(object.className.constData());
            if (!storage || !storage->create)
                unknown.append(QString::fromUtf8(object.className));
            found = known.insert(object.className, storage);
        }
        m_storages.push_back(*found);
    }
    if (!unknown.isEmpty()) {
        unknown.sort();
        throw ZORSysFileException(ZORGeoContainer::tr("container file holds objects of unknown classes: %1")
                                      .arg(unknown.join(QLatin1String(", "))));
    }
}

// Depth first over the references, without recursion: chains may be as long as the file.
void ZORGeoContainerLoader::MakeWithReferences(int number)
{
    struct Step
    {
        int number;
        qsizetype next; // of its references
    };
    std::vector<Step> open{{number, 0}};
    while (!open.empty()) {
        Step& step = open.back();
        const auto at = size_t(step.number);
        if (m_made[at]) {
            open.pop_back();
            continue;
        }
        m_isOpen[at] = true;
        const QList<qint32>& needs = m_needs[at];
        while (step.next < needs.size() && (needs[step.next] < 0 || m_made[size_t(needs[step.next])]))
            ++step.next;
        if (step.next == needs.size()) {
            MakeObject(step.number);
            open.pop_back();
            continue;
        }
        const qint32 needed = needs[step.next];
        if (m_isOpen[size_t(needed)])
            ZORGeoObjectReader(m_objects[at], step.number, m_made)
                .Fail(ZORGeoContainer::tr("its references go in a circle"));
        open.push_back({needed, 0});
    }
}

void ZORGeoContainerLoader::MakeObject(int number)
{
    const auto at = size_t(number);
    const ZORGeoObjectReader reader(m_objects[at], number, m_made);
    try {
        m_made[at] = m_storages[at]->create(&m_container, reader);
    } catch (const ZORSysFileException&) {
        throw;
    } catch (const ZORSysException& exception) {
        reader.Fail(exception.GetMessage());
    }
    m_isJoined[at] = m_made[at]->IsInitialized();
    if (!m_isJoined[at])
        m_owned.emplace_back(m_made[at]);
    if (m_made[at]->GetContainer() != &m_container)
        reader.Fail(ZORGeoContainer::tr("it lacks what would tie it to the container"));
}

void ZORGeoContainerLoader::Complete(int number)
{
    const auto at = size_t(number);
    const ZORGeoObjectReader reader(m_objects[at], number, m_made);
    const QMetaObject* const type = m_made[at]->metaObject();
    ZORGeoObjectStorage::Chain& chain = m_chains[type];
    if (chain.empty())
        chain = ZORGeoObjectStorage::ChainOf(type);
    try {
        for (const ZORGeoObjectStorage* storage : chain) {
            if (storage->complete)
                storage->complete(*m_made[at], reader);
        }
    } catch (const ZORSysFileException&) {
        throw;
    } catch (const ZORSysException& exception) {
        reader.Fail(exception.GetMessage());
    }
}

bool ZORGeoContainerLoader::HasNewName(size_t object) const
{
    return !m_isJoined[object] && !m_objects[object].name.isEmpty();
}

void ZORGeoContainerLoader::SetNames(ZORGeoContainerNames& names)
{
    bool isAnyUsed = false;
    for (size_t i = 0; i < m_objects.size() && !isAnyUsed; ++i)
        isAnyUsed = HasNewName(i) && names.IsUsed(m_objects[i].name);
    const QHash<QString, QString> changed = isAnyUsed ? ReplaceUsedNames(names) : QHash<QString, QString>();
    for (size_t i = 0; i < m_objects.size(); ++i) {
        const QString& name = m_objects[i].name;
        if (HasNewName(i))
            m_made[i]->setObjectName(isAnyUsed ? changed.value(name, name) : name);
    }
}

// What the names become that the container has already: names that are neither in the container nor in the file.
QHash<QString, QString> ZORGeoContainerLoader::ReplaceUsedNames(ZORGeoContainerNames& names) const
{
    QSet<QString> used;
    QStringList reserved;
    for (size_t i = 0; i < m_objects.size(); ++i) {
        if (HasNewName(i) && names.IsUsed(m_objects[i].name))
            used.insert(m_objects[i].name);
    }
    for (size_t i = 0; i < m_objects.size(); ++i) {
        if (HasNewName(i))
            reserved.append(m_objects[i].name);
    }
    for (const QString& name : qAsConst(reserved))
        names.Insert(name);
    QHash<QString, QString> changed;
    for (size_t i = 0; i < m_objects.size(); ++i) {
        const QString& name = m_objects[i].name;
        if (!HasNewName(i) || !used.contains(name) || changed.contains(name))
            continue;
        const QString replacement = names.MakeUnique(name);
        changed.insert(name, replacement);
        names.Insert(replacement);
        reserved.append(replacement);
    }
    for (const QString& name : qAsConst(reserved))
        names.Remove(name);
    return changed;
}

void ZORGeoContainerLoader::Initialize(ZORGeoGeometry& object)
{
    const QString name = object.objectName();
    try {
        object.Initialize();
    } catch (const ZORSysException& exception) {
        throw ZORSysFileException(ZORGeoContainer::tr("object '%1' of the container file cannot be added: %2")
                                      .arg(name, exception.GetMessage()));
    }
}

std::vector<QPointer<ZORGeoGeometry>> ZORGeoContainerLoader::Register(ZORGeoContainerNames& names)
{
    SetNames(names);
    const QPointer<ZORGeoContainer> container(&m_container);
    std::vector<QPointer<ZORGeoGeometry>> inOrder;
    for (size_t i = 0; i < m_made.size(); ++i)
        inOrder.emplace_back(m_isJoined[i] ? nullptr : m_made[i]);
    // Receivers of the container's signals may remove objects, or the container itself.
    for (const QPointer<ZORGeoGeometry>& object : inOrder) {
        const bool hasName = object && !object->objectName().isEmpty();
        if (container && object)
            Initialize(*object);
        if (object && !hasName)
            object->setObjectName(QString());
    }
    if (container)
        m_owned.clear();
    return inOrder;
}
