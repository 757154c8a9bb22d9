#include "tests/platform/registry/RegistryFixture.h"
#include "tests/support/StandardErrorOf.h"

#include <QByteArray>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <fstream>
#include <set>

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

class RegistrySearch : public RegistryFixture {
protected:
    // Opens every service found, in order; returns the doubles that were reached.
    std::vector<const SocketServiceDouble*> servicesInOrder(SocketIORegistry& registry)
    {
        std::vector<const SocketServiceDouble*> order;
        for (const io_object_t service : find(registry)) {
            std::vector<std::size_t> before;
            for (const auto& candidate : services)
                before.push_back(candidate->requests().size());
            io_connect_t connection = 0;
            EXPECT_EQ(registry.IOServiceOpen(service, 0, connection), KERN_SUCCESS);
            for (std::size_t i = 0; i < services.size(); ++i) {
                if (services[i]->requests().size() > before[i])
                    order.push_back(services[i].get());
            }
            registry.IOServiceClose(connection);
            registry.IOObjectRelease(service);
        }
        return order;
    }

    std::string errorsOfSearch(SocketIORegistry& registry, std::size_t expectedServices)
    {
        return standardErrorOf([&] { EXPECT_EQ(find(registry).size(), expectedServices); });
    }
};

TEST_F(RegistrySearch, FindsNothingWithoutDirectories)
{
    SocketIORegistry registry(roots);
    EXPECT_EQ(errorsOfSearch(registry, 0), "");
    SocketIORegistry noRoots({});
    EXPECT_EQ(errorsOfSearch(noRoots, 0), "");
    SocketIORegistry missingRoot({ base / "nowhere" });
    EXPECT_EQ(errorsOfSearch(missingRoot, 0), "");
}

TEST_F(RegistrySearch, SortsByRootThenByInstanceNameInByteOrder)
{
    const auto& userA = startService(1, "a");
    const auto& umlaut = startService(0, "\xC3\xA4");
    const auto& ten = startService(0, "card10");
    const auto& nine = startService(0, "card9");
    const auto& capital = startService(0, "Z");
    const auto& small = startService(0, "b");
    const auto& hidden = startService(0, ".b");
    SocketIORegistry registry(roots);
    EXPECT_EQ(servicesInOrder(registry),
        (std::vector<const SocketServiceDouble*> { &hidden, &capital, &small, &ten, &nine, &umlaut, &userA }));
}

TEST_F(RegistrySearch, FindsOnlyTheGivenClass)
{
    startService(0, "other", "Pellvane2");
    startService(0, "another", "pellvane");
    SocketIORegistry registry(roots);
    EXPECT_TRUE(find(registry).empty());
    EXPECT_EQ(find(registry, "Pellvane2").size(), 1u);
}

TEST_F(RegistrySearch, NoticesChangesBetweenSearches)
{
    SocketIORegistry registry(roots);
    EXPECT_TRUE(find(registry).empty());
    auto& service = startService(0, "card");
    EXPECT_EQ(find(registry).size(), 1u);
    service.die();
    EXPECT_TRUE(find(registry).empty());
    ASSERT_TRUE(service.start());
    EXPECT_EQ(find(registry).size(), 1u);
    service.die(true);
    EXPECT_TRUE(find(registry).empty());
}

TEST_F(RegistrySearch, SkipsWhatDoesNotAcceptConnections)
{
    startService(0, "m-stale").die(); // leaves its socket
    const std::string directory = classDirectory(0);
    std::ofstream(directory + "/a-file") << "not a socket";
    ASSERT_EQ(::mkfifo((directory + "/a-pipe").c_str(), 0600), 0);
    std::filesystem::create_directory(directory + "/a-directory");
    auto& elsewhere = startService(0, "target", "Elsewhere");
    std::filesystem::create_symlink(elsewhere.path(), directory + "/a-link");
    const auto& living = startService(0, "z-living");
    SocketIORegistry registry(roots);
    EXPECT_EQ(servicesInOrder(registry), (std::vector<const SocketServiceDouble*> { &living }));
}

TEST_F(RegistrySearch, SkipsSocketOfAnotherType)
{
    const std::string path = classDirectory(0) + "/stream";
    const FileDescriptor listener(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    sockaddr_un address {};
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, path.c_str(), path.size() + 1);
    ASSERT_EQ(::bind(listener.get(), reinterpret_cast<const sockaddr*>(&address), sizeof(address)), 0);
    ASSERT_EQ(::listen(listener.get(), 4), 0);
    SocketIORegistry registry(roots);
    EXPECT_TRUE(find(registry).empty());
}

TEST_F(RegistrySearch, FindsServiceWithPathLongerThanSocketAddress)
{
    startService(0, "card");
    std::string deep = base.string();
    for (int level = 0; level < 3; ++level)
        deep += "/" + std::string(200, 'd');
    std::filesystem::create_directories(deep);
    std::filesystem::rename(classDirectory(0), deep + "/Pellvane");
    std::filesystem::rename(deep + "/Pellvane/card", deep + "/Pellvane/" + std::string(255, 'c'));
    SocketIORegistry registry({ deep });
    const io_connect_t connection = open(registry);
    EXPECT_NE(connection, 0u);
    EXPECT_EQ(registry.IOConnectMethodScalarIScalarO(connection, 1), KERN_SUCCESS);
}

TEST_F(RegistrySearch, SkipsDirectoryWritableByOthers)
{
    for (const mode_t mode : { 0770U, 0720U, 0702U, 0777U, 01777U }) {
        startService(0, "planted");
        classDirectory(0, mode);
        startService(1, "own");
        SocketIORegistry registry(roots);
        const std::string errors = errorsOfSearch(registry, 1);
        EXPECT_EQ(std::count(errors.begin(), errors.end(), '\n'), 1) << errors;
        EXPECT_NE(errors.find(classDirectory(0, mode) + " "), std::string::npos) << errors;
    }
    for (const mode_t mode : { 0700U, 0755U, 0750U }) {
        classDirectory(0, mode);
        SocketIORegistry registry(roots);
        EXPECT_EQ(errorsOfSearch(registry, 2), "") << std::oct << mode;
    }
}

TEST_F(RegistrySearch, SkipsDirectoryOfAnotherUser)
{
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root can change the owner of a directory";
    startService(0, "planted");
    constexpr uid_t anotherUser = 12345;
    ASSERT_EQ(::chown(classDirectory(0).c_str(), anotherUser, static_cast<gid_t>(-1)), 0);
    SocketIORegistry registry(roots);
    const std::string errors = errorsOfSearch(registry, 0);
    EXPECT_EQ(std::count(errors.begin(), errors.end(), '\n'), 1) << errors;

    // Another user trusts their own directory and those of root.
    ASSERT_EQ(::chmod(base.c_str(), 0755), 0);
    startService(1, "own");
    classDirectory(1, 0755);
    ASSERT_EQ(::chmod(services.back()->path().c_str(), 0666), 0);
    ASSERT_EQ(::chown(services.front()->path().c_str(), anotherUser, static_cast<gid_t>(-1)), 0);
    ASSERT_EQ(::seteuid(anotherUser), 0);
    SocketIORegistry registryOfAnotherUser(roots);
    const std::string noErrors = errorsOfSearch(registryOfAnotherUser, 2);
    ASSERT_EQ(::seteuid(0), 0);
    EXPECT_EQ(noErrors, "");
}

TEST_F(RegistrySearch, SkipsSymbolicLinkAndFileInPlaceOfDirectory)
{
    startService(0, "card", "Elsewhere");
    std::filesystem::create_symlink(roots[0] + "/Elsewhere", roots[0] + "/Pellvane");
    std::ofstream(roots[1] + "/Pellvane") << "not a directory";
    SocketIORegistry registry(roots);
    const std::string errors = errorsOfSearch(registry, 0);
    EXPECT_EQ(std::count(errors.begin(), errors.end(), '\n'), 2) << errors;
}

TEST_F(RegistrySearch, ReportsSkippedDirectoryOnceUntilThatChanges)
{
    startService(0, "card");
    classDirectory(0, 0777);
    SocketIORegistry registry(roots);
    EXPECT_NE(errorsOfSearch(registry, 0), "");
    EXPECT_EQ(errorsOfSearch(registry, 0), "");
    classDirectory(0, 0700);
    EXPECT_EQ(errorsOfSearch(registry, 1), "");
    classDirectory(0, 0777);
    EXPECT_NE(errorsOfSearch(registry, 0), "");
}

TEST_F(RegistrySearch, CannotOpenServiceWhoseDirectoryIsNoLongerTrusted)
{
    startService(0, "card");
    SocketIORegistry registry(roots);
    const auto found = find(registry);
    ASSERT_EQ(found.size(), 1u);
    classDirectory(0, 0777);
    io_connect_t connection = 5;
    EXPECT_NE(registry.IOServiceOpen(found[0], 0, connection), KERN_SUCCESS);
    EXPECT_EQ(connection, 0u);
}

TEST_F(RegistrySearch, HasNoDictionaryForInvalidClassName)
{
    SocketIORegistry registry(roots);
    using namespace std::string_view_literals;
    for (const std::string_view name : { ""sv, "."sv, ".."sv, "../machine"sv, "a/b"sv, "a\0b"sv })
        EXPECT_EQ(registry.IOServiceMatching(name), 0u) << name;
}

TEST_F(RegistrySearch, ConsumesDictionary)
{
    SocketIORegistry registry(roots);
    const CFDictionaryRef dictionary = registry.IOServiceMatching(className);
    ASSERT_NE(dictionary, 0u);
    io_object_t iterator = 0;
    EXPECT_EQ(registry.IOServiceGetMatchingServices(0, dictionary, iterator), KERN_SUCCESS);
    EXPECT_NE(registry.IOServiceGetMatchingServices(0, dictionary, iterator), KERN_SUCCESS);
    EXPECT_EQ(iterator, 0u);
    registry.CFRelease(dictionary);

    const CFDictionaryRef released = registry.IOServiceMatching(className);
    registry.CFRelease(released);
    EXPECT_NE(registry.IOServiceGetMatchingServices(0, released, iterator), KERN_SUCCESS);
}

TEST_F(RegistrySearch, IgnoresHandlesThatAreNotHeld)
{
    startService(0, "card");
    SocketIORegistry registry(roots);
    const auto found = find(registry);
    ASSERT_EQ(found.size(), 1u);
    for (const std::uint32_t number : { 0U, 4711U, 0xFFFFFFFFU }) {
        registry.IOObjectRelease(number);
        registry.CFRelease(number);
        registry.mach_port_deallocate(number);
        registry.IOServiceClose(number);
        EXPECT_EQ(registry.IOIteratorNext(number), 0u);
        io_connect_t connection = 5;
        EXPECT_NE(registry.IOServiceOpen(number, 0, connection), KERN_SUCCESS);
        EXPECT_NE(registry.IOConnectMethodScalarIScalarO(number, 1), KERN_SUCCESS);
    }
    // Nor does it accept a handle of another kind.
    registry.CFRelease(found[0]);
    registry.IOServiceClose(found[0]);
    io_connect_t connection = 0;
    EXPECT_EQ(registry.IOServiceOpen(found[0], 0, connection), KERN_SUCCESS);
    registry.IOObjectRelease(found[0]);
    registry.IOObjectRelease(found[0]);
    EXPECT_EQ(registry.IOConnectMethodScalarIScalarO(connection, 1), KERN_SUCCESS);
    io_connect_t another = 0;
    EXPECT_NE(registry.IOServiceOpen(found[0], 0, another), KERN_SUCCESS);
    registry.IOServiceClose(connection);
    registry.IOServiceClose(connection);
}

TEST_F(RegistrySearch, NeverReusesHandles)
{
    startService(0, "card");
    SocketIORegistry registry(roots);
    std::set<std::uint32_t> numbers;
    for (int round = 0; round < 20; ++round) {
        mach_port_t port = 0;
        ASSERT_EQ(registry.IOMasterPort(port), KERN_SUCCESS);
        const CFDictionaryRef dictionary = registry.IOServiceMatching(className);
        io_object_t iterator = 0;
        ASSERT_EQ(registry.IOServiceGetMatchingServices(port, dictionary, iterator), KERN_SUCCESS);
        const io_object_t service = registry.IOIteratorNext(iterator);
        io_connect_t connection = 0;
        ASSERT_EQ(registry.IOServiceOpen(service, 0, connection), KERN_SUCCESS);
        for (const std::uint32_t number : { port, dictionary, iterator, service, connection }) {
            EXPECT_NE(number, 0u);
            EXPECT_TRUE(numbers.insert(number).second) << number;
        }
        registry.IOObjectRelease(iterator);
        registry.IOObjectRelease(service);
        registry.IOServiceClose(connection);
    }
}

TEST_F(RegistrySearch, CountsReferencesOfService)
{
    startService(0, "card");
    SocketIORegistry registry(roots);
    const io_object_t service = find(registry).at(0);
    EXPECT_EQ(find(registry).at(0), service);
    registry.IOObjectRelease(service);
    io_connect_t connection = 0;
    EXPECT_EQ(registry.IOServiceOpen(service, 0, connection), KERN_SUCCESS);
    registry.IOObjectRelease(service);
    EXPECT_NE(registry.IOServiceOpen(service, 0, connection), KERN_SUCCESS);
    EXPECT_NE(find(registry).at(0), service);
}

TEST(DefaultRegistryRoots, AreMachineThenUser)
{
    const std::filesystem::path runtime = std::filesystem::temp_directory_path() / "runtime-of-registry-test";
    std::filesystem::create_directory(runtime);
    std::filesystem::permissions(runtime, std::filesystem::perms::owner_all);
    const QByteArray before = qgetenv("XDG_RUNTIME_DIR");
    qputenv("XDG_RUNTIME_DIR", runtime.c_str());
    EXPECT_EQ(defaultRegistryRoots(), (std::vector<std::string> { "/run/io-registry", runtime / "io-registry" }));
    if (before.isNull())
        qunsetenv("XDG_RUNTIME_DIR");
    else
        qputenv("XDG_RUNTIME_DIR", before);
    std::filesystem::remove_all(runtime);
}

} // namespace
