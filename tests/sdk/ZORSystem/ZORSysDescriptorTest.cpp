// Tests of ZORSysDescriptor.

#include <ZORSystem/ZORSysDescriptor.h>

#include <gtest/gtest.h>

#include <fcntl.h>

namespace {

int OpenNull()
{
    return open("/dev/null", O_RDONLY | O_CLOEXEC);
}

bool IsOpen(int number)
{
    return fcntl(number, F_GETFD) >= 0;
}

TEST(ZORSysDescriptorTest, IsClosedWithItsOwner)
{
    int number = -1;
    {
        const ZORSysDescriptor descriptor(OpenNull());
        number = descriptor.Get();
        ASSERT_TRUE(descriptor.IsOpen());
        EXPECT_TRUE(IsOpen(number));
    }
    EXPECT_FALSE(IsOpen(number));
}

TEST(ZORSysDescriptorTest, AMoveTransfersItAndClosesTheFormerOne)
{
    ZORSysDescriptor first(OpenNull());
    ZORSysDescriptor second(OpenNull());
    const int moved = first.Get();
    const int former = second.Get();
    second = std::move(first);
    EXPECT_FALSE(first.IsOpen());
    EXPECT_FALSE(IsOpen(former));
    EXPECT_EQ(moved, second.Get());
    const ZORSysDescriptor third(std::move(second));
    EXPECT_FALSE(second.IsOpen());
    EXPECT_TRUE(IsOpen(moved));
}

TEST(ZORSysDescriptorTest, AMoveToItselfKeepsIt)
{
    ZORSysDescriptor descriptor(OpenNull());
    ZORSysDescriptor& same = descriptor;
    descriptor = std::move(same);
    EXPECT_TRUE(descriptor.IsOpen());
    EXPECT_TRUE(IsOpen(descriptor.Get()));
}

TEST(ZORSysDescriptorTest, AReleasedOneStaysOpen)
{
    int number = -1;
    {
        ZORSysDescriptor descriptor(OpenNull());
        number = descriptor.Release();
        EXPECT_FALSE(descriptor.IsOpen());
    }
    EXPECT_TRUE(IsOpen(number));
    const ZORSysDescriptor owner(number);
}

TEST(ZORSysDescriptorTest, AResetKeepsTheErrorNumber)
{
    ZORSysDescriptor descriptor(OpenNull());
    const int number = descriptor.Get();
    errno = ENOSPC;
    descriptor.Reset();
    EXPECT_EQ(ENOSPC, errno);
    EXPECT_FALSE(IsOpen(number));
    EXPECT_FALSE(descriptor.IsOpen());
    descriptor.Reset();
    EXPECT_FALSE(ZORSysDescriptor().IsOpen());
}

} // namespace
