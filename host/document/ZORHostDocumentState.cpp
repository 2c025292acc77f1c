#include "document/ZORHostDocumentState.h"

#include <ZORFeature/ZORFeatContainer.h>

ZORHostDocumentState::ZORHostDocumentState(QObject* parent)
    : QObject(parent)
{
}

void ZORHostDocumentState::SetContainer(ZORFeatContainer* container)
{
    if (m_container)
        disconnect(m_container, nullptr, this, nullptr);
    m_container = container;
    MarkNew();
    if (container)
        connect(container, &ZORGeoContainer::ContentChanged, this, [this] { m_isChanged = true; });
}

bool ZORHostDocumentState::IsChanged() const
{
    return m_container && m_isChanged && (m_hasFile || !IsEmpty());
}

void ZORHostDocumentState::MarkSaved()
{
    m_isChanged = false;
    m_hasFile = true;
}

void ZORHostDocumentState::MarkNew()
{
    m_isChanged = false;
    m_hasFile = false;
}

void ZORHostDocumentState::AddFromFile(bool isDocument, const std::function<void()>& add)
{
    const bool wasChanged = IsChanged();
    const bool wasEmpty = IsEmpty();
    const bool wasMarked = m_isChanged;
    try {
        add();
    } catch (...) {
        m_isChanged = wasMarked; // whatever came in has left again
        throw;
    }
    m_isChanged = wasChanged || m_hasFile;
    m_hasFile = m_hasFile || (isDocument && wasEmpty);
}

bool ZORHostDocumentState::IsEmpty() const
{
    return !m_container || m_container->GetNumGeometry() == 0;
}
