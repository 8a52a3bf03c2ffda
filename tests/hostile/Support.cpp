#include "hostile/HostileTest.h"

#include <array>
#include <stdexcept>

#include <arpa/inet.h>
#include <sys/inotify.h>
#include <sys/socket.h>
#include <unistd.h>

#include "objects/KeyNames.h"

namespace hostile {
namespace {

int checked(int result, const char* what)
{
    if (result < 0) throw std::runtime_error(std::string("no ") + what);
    return result;
}

} // namespace

OpenWatch::OpenWatch(const std::filesystem::path& folder)
    : m_descriptor(checked(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC), "watch"))
{
    checked(::inotify_add_watch(m_descriptor, folder.c_str(), IN_OPEN | IN_ACCESS), "watch of the folder");
}

OpenWatch::~OpenWatch()
{
    ::close(m_descriptor);
}

std::vector<std::string> OpenWatch::Opened()
{
    std::vector<std::string> names;
    alignas(inotify_event) std::array<char, 65536> buffer;
    for (;;) {
        const ssize_t taken = ::read(m_descriptor, buffer.data(), buffer.size());
        if (taken <= 0) return names;
        for (ssize_t at = 0; at < taken;) {
            const auto* const event = reinterpret_cast<const inotify_event*>(buffer.data() + at);
            names.emplace_back(event->len ? event->name : ".");
            at += static_cast<ssize_t>(sizeof(inotify_event) + event->len);
        }
    }
}

Listener::Listener() : m_descriptor(checked(::socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0), "socket"))
{
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto* const any = reinterpret_cast<sockaddr*>(&address);
    checked(::bind(m_descriptor, any, size), "port");
    checked(::listen(m_descriptor, 16), "listener");
    checked(::getsockname(m_descriptor, any, &size), "name of the port");
    m_port = ntohs(address.sin_port);
}

Listener::~Listener()
{
    ::close(m_descriptor);
}

bool Listener::HasCaller()
{
    const int caller = ::accept(m_descriptor, nullptr, nullptr);
    if (caller >= 0) ::close(caller);
    return caller >= 0;
}

std::string describe(const CObjectManager& manager)
{
    std::string text;
    for (const obmgr::RecordInfo& row : obmgr::Records()) {
        const obmgr::ObjectTable& table = manager.TableOf(row.type);
        for (std::size_t i = table.NextPosition(0); const CPipeObject* const object = table.At(i);
             i = table.NextPosition(i + 1)) {
            text += row.tag;
            text += ' ' + std::to_string(object->GetId32());
            for (const std::int32_t link : object->Links())
                text += ' ' + std::to_string(link);
            for (const auto entry : object->GetAttributes())
                text += '\n' + obmgr::NameOfKey(entry.key).text + '=' + std::string(entry.value);
            text += "\n\n";
        }
    }
    return text;
}

void HostileTest::expectRefused(CObjectManager& manager, const std::string& bytes, const CString& start)
{
    EXPECT_FALSE(read(manager, bytes));
    EXPECT_EQ(error.Left(start.GetLength()), start) << error;
    EXPECT_LT(error.GetLength(), 5000);
    EXPECT_EQ(interface.open, 0);
    EXPECT_TRUE(readRecords(manager, "<ohaul id=\"2000000000\"/>", false)) << error;
}

void HostileTest::expectRefused(const std::string& bytes, const CString& start)
{
    CObjectManager manager;
    expectRefused(manager, bytes, start);
}

CString HostileTest::valueIn(const std::string& bytes)
{
    CObjectManager manager;
    EXPECT_TRUE(read(manager, bytes)) << error;
    const CNode* const node = manager.GetNodeObjectOriginal(1);
    return node ? node->GetSubAttribute(L"a") : CString(L"no node");
}

} // namespace hostile
