#include "platform/core/VarnObject.h"

#include <gtest/gtest.h>

using Varn::Reference;
using Varn::VarnObject;

namespace {

class Folder : public VarnObject
{
public:
    explicit Folder(bool &isAlive) : m_isAlive(isAlive) { m_isAlive = true; }
    ~Folder() override { m_isAlive = false; }
    std::wstring displayName() const override { return L"Folder"; }

private:
    bool &m_isAlive;
};

} // namespace

TEST(VarnObject, IsNeitherOperationNorSetupUnlessItSaysSo)
{
    bool isAlive = false;
    const Reference<VarnObject> object(new Folder(isAlive));
    EXPECT_FALSE(object->isOperation());
    EXPECT_FALSE(object->isSetup());
    EXPECT_EQ(object->displayName(), L"Folder");
}

TEST(VarnObject, LivesAsLongAsTheLastReference)
{
    bool isAlive = false;
    Reference<VarnObject> first(new Folder(isAlive));
    Reference<VarnObject> second = first;
    first = nullptr;
    EXPECT_TRUE(isAlive);
    second = nullptr;
    EXPECT_FALSE(isAlive);
}
