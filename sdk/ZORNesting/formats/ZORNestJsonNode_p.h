// Values of an instance document that know where they are in it.

#pragma once

#include <ZORNesting/ZORNestInstance.h>

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonValue>
#include <QString>

#include <array>

/// The fault that ends the reading of a document or of one item of it.
struct ZORNestJsonFault
{
    QString message;
};

/// A value with its place in the document.
///
/// Read for nesting, absent values give the default and values of another type are faults, described as
/// "items[3].demand: a number is expected". Read for translation, texts and objects of another type count as absent,
/// lists have to be there, and faults are described by what is wrong alone, since the item is named elsewhere.
class ZORNestJsonNode
{
    Q_DECLARE_TR_FUNCTIONS(ZORNestJsonNode)

public:
    ZORNestJsonNode(const QJsonValue& document, ZORNestInstance::Purpose purpose);

    ZORNestInstance::Purpose GetPurpose() const { return m_purpose; }
    const QJsonValue& GetValue() const { return m_value; }
    bool IsAbsent() const { return m_value.isUndefined(); }
    bool IsNull() const { return m_value.isNull(); }
    bool IsArray() const { return m_value.isArray(); }

    ZORNestJsonNode operator[](const char* key) const;
    /// Returns the elements of a list; none where it is absent.
    QJsonArray GetList() const;
    /// Returns an element of this list.
    /// \param list   of GetList()
    /// \param label  what faults call the element; the list's own name if null
    ZORNestJsonNode GetElement(const QJsonArray& list, qsizetype index, const char* label = nullptr) const;
    /// Calls a function for each element of the list.
    template<class Function>
    void ForEach(const char* label, Function function) const
    {
        const QJsonArray list = GetList();
        for (qsizetype i = 0; i < list.size(); ++i)
            function(GetElement(list, i, label));
    }

    double GetNumber(double absent) const;
    /// Returns a number that has to be there.
    double GetNumber() const;
    /// Returns a number of at least 0.
    double GetSize(double absent) const;
    int GetInteger(int absent, int least) const;
    bool GetFlag() const;
    QString GetText(const QString& absent) const;

    /// Throws ZORNestJsonFault.
    /// \param reason       what is expected of the value at its place
    /// \param description  what is wrong, for translation; if null, the reason serves
    [[noreturn]] void Refuse(const QString& reason, const QString& description = {}) const;

private:
    bool IsReadForNesting() const { return m_purpose == ZORNestInstance::Purpose::Nesting; }
    QString GetPlace() const;

    QJsonValue m_value;
    ZORNestInstance::Purpose m_purpose;
    const char* m_label = "";
    QString m_path;                             // of the last value with a key
    std::array<qsizetype, 2> m_indices{-1, -1}; // from there on; -1: none
};
