// What the tests of hostile input share: refusals that leave the process healthy, and proofs that nothing was opened.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "persistence/PersistenceTest.h"

namespace hostile {

// A text that stands in files which nobody may read.
inline constexpr char kMarker[] = "MARKER-OF-A-SECRET";

// Sees each opening of a file in a folder.
class OpenWatch {
public:
    explicit OpenWatch(const std::filesystem::path& folder);
    ~OpenWatch();
    OpenWatch(const OpenWatch&) = delete;
    OpenWatch& operator=(const OpenWatch&) = delete;

    // The names of the files opened since the last call.
    std::vector<std::string> Opened();

private:
    int m_descriptor;
};

// Listens on a port of its own of the loopback address.
class Listener {
public:
    Listener();
    ~Listener();
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;

    std::string Port() const { return std::to_string(m_port); }
    // Whether somebody has connected since the last call.
    bool HasCaller();

private:
    int m_descriptor;
    std::uint16_t m_port = 0;
};

// The objects of all tables in their order, with ids, links and attributes: equal for equal designs.
std::string describe(const CObjectManager& manager);

class HostileTest : public PersistenceTest {
protected:
    static constexpr wchar_t kAtFile[] = L"Error at file.\n";

    // Reads the bytes into `manager`. The read must fail with a text that begins with `start`, and the next file must
    // load.
    void expectRefused(CObjectManager& manager, const std::string& bytes, const CString& start = kAtFile);
    void expectRefused(const std::string& bytes, const CString& start = kAtFile);
    // The value of key "a" of node 1 of the file, which must load.
    CString valueIn(const std::string& bytes);
    // A file whose node 1 has the value under key "a".
    static std::string withValue(const std::string& value)
    {
        return document("<node id=\"1\"><a contents=\"" + value + "\"/></node>");
    }
};

} // namespace hostile
