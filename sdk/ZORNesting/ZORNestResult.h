// Content of a nesting result file.

#pragma once

#include <ZORMathematics/ZORMathBoundingBox.h>
#include <ZORNesting/ZORNestResultItem.h>
#include <ZORNesting/ZORNestingGlobal.h>

#include <QCoreApplication>
#include <QList>
#include <QSharedDataPointer>

class ZORNestResultData;

/// The parts that a translation gave, or those that lie on one sheet. A value; copies share their data and
/// their items.
///
/// Thread safety: reentrant; objects may be shared read-only.
class ZORNESTING_EXPORT ZORNestResult
{
    Q_DECLARE_TR_FUNCTIONS(ZORNestResult)

public:
    /// Files may hold other numbers too, which mean nestings.
    enum ResultType : int { Nesting = 0, Translation = 1 };

    /// An invalid result without items, as given for a file that cannot be read.
    ZORNestResult();
    /// A valid result without items.
    explicit ZORNestResult(ResultType type);
    ZORNestResult(const ZORNestResult& other);
    ZORNestResult(ZORNestResult&& other) noexcept;
    ZORNestResult& operator=(const ZORNestResult& other);
    ZORNestResult& operator=(ZORNestResult&& other) noexcept;
    ~ZORNestResult();
    void swap(ZORNestResult& other) noexcept { d.swap(other.d); }

    bool IsValid() const;
    /// Nesting for an invalid result.
    ResultType GetResultType() const;

    /// The sheet on which the items lie; empty (as at first) for a result without one.
    ZORMathBoundingBox GetSheet() const;
    void SetSheet(const ZORMathBoundingBox& sheet);

    /// Number of equal sheets that are cut at once with these items, at least 1 (as at first).
    int GetStackSize() const;
    /// \throws ZORSysException "a stack needs at least one sheet" when \a count is less than 1; the size
    ///         then stays as it is
    void SetStackSize(int count);

    /// The pointers stay the same in all copies of this result, and live as long as one of them. O(1)
    QList<const ZORNestResultItem*> GetItems() const;
    void AddItem(const ZORNestResultItem& item);

    /// Same validity, type, sheet, stack size and items.
    friend ZORNESTING_EXPORT bool operator==(const ZORNestResult& a, const ZORNestResult& b);
    /// [n], n items
    friend ZORNESTING_EXPORT void ZorTraceAppend(QByteArray& out, const ZORNestResult& result);

private:
    QSharedDataPointer<ZORNestResultData> d;
};

Q_DECLARE_SHARED(ZORNestResult)
