#include "support/qt/UserFolders.h"

#include "support/qt/TestKey.h"

namespace tessarine
{

UserFolders::UserFolders() : key_(std::make_unique<TestKey>(HKEY_CURRENT_USER)) {}

UserFolders::~UserFolders() = default;

void UserFolders::BlockSettings() const
{
    key_->Block(L"Software\\Tessarine");
}

}  // namespace tessarine
