// Reads nesting instances from JSON documents.

#pragma once

#include "ZORNestInstance_p.h"
#include "ZORNestJsonNode_p.h"

#include <QByteArray>

#include <set>

/// Fills the data of an instance; see ZORNestInstance::Read().
class ZORNestInstanceReader
{
    Q_DECLARE_TR_FUNCTIONS(ZORNestInstanceReader)

public:
    explicit ZORNestInstanceReader(ZORNestInstanceData& instance)
        : m_instance(instance)
    {
    }

    /// \throws ZORSysException as ZORNestInstance::Read() does
    void Read(const QByteArray& document, ZORNestInstance::Purpose purpose);

private:
    void ReadJob(const ZORNestJsonNode& root);
    void ReadOutlines(const ZORNestJsonNode& root);
    void ReadKinds(const ZORNestJsonNode& root);
    void ReadParameters(const ZORNestJsonNode& parameters);
    static int ReadId(const ZORNestJsonNode& node, size_t index, std::set<int>& known);
    static ZORNestSolver::Item ReadItem(const ZORNestJsonNode& node, int id);
    static ZORNestSolver::SheetKind ReadKind(const ZORNestJsonNode& node, int id);
    static ZORNestSolver::UsageRule ReadUsageRule(const ZORNestJsonNode& node);

    ZORNestInstanceData& m_instance;
};
