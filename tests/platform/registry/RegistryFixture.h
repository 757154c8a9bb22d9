#pragma once

#include "platform/registry/SocketIORegistry.h"
#include "tests/support/SocketServiceDouble.h"

#include <QtGlobal>
#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include <sys/stat.h>

// A registry with two empty roots, and services in them.
class RegistryFixture : public testing::Test {
    Q_DISABLE_COPY_MOVE(RegistryFixture)

protected:
    static constexpr std::chrono::milliseconds shortTimeout { 250 };
    static constexpr char className[] = "Pellvane";

    RegistryFixture()
    {
        std::array<char, 32> pattern { "/tmp/io-registry-XXXXXX" };
        base = ::mkdtemp(pattern.data());
        for (const char* const root : { "machine", "user" }) {
            roots.push_back(base / root);
            std::filesystem::create_directory(roots.back());
        }
    }

    ~RegistryFixture() override { std::filesystem::remove_all(base); }

    // Creates ROOT/CLASS if it is missing; returns its path.
    std::string classDirectory(std::size_t root, mode_t mode = 0700, const char* name = className) const
    {
        std::string directory = roots.at(root) + "/" + name;
        (void)::mkdir(directory.c_str(), mode);
        (void)::chmod(directory.c_str(), mode);
        return directory;
    }

    SocketServiceDouble& startService(std::size_t root, const std::string& instance, const char* name = className)
    {
        services.push_back(std::make_unique<SocketServiceDouble>(classDirectory(root, 0700, name) + "/" + instance));
        EXPECT_TRUE(services.back()->start());
        return *services.back();
    }

    static std::vector<io_object_t> find(SocketIORegistry& registry, const char* name = className)
    {
        mach_port_t port = 0;
        EXPECT_EQ(registry.IOMasterPort(port), KERN_SUCCESS);
        io_object_t iterator = 0;
        EXPECT_EQ(
            registry.IOServiceGetMatchingServices(port, registry.IOServiceMatching(name), iterator), KERN_SUCCESS);
        std::vector<io_object_t> found;
        while (const io_object_t service = registry.IOIteratorNext(iterator))
            found.push_back(service);
        registry.IOObjectRelease(iterator);
        registry.mach_port_deallocate(port);
        return found;
    }

    // Opens the last service found; 0 if there is none or it cannot be opened.
    static io_connect_t open(SocketIORegistry& registry)
    {
        const auto found = find(registry);
        io_connect_t connection = 0;
        if (!found.empty())
            (void)registry.IOServiceOpen(found.back(), 0, connection);
        for (const io_object_t service : found)
            registry.IOObjectRelease(service);
        return connection;
    }

    static std::ptrdiff_t openFiles()
    {
        const std::filesystem::directory_iterator files("/proc/self/fd");
        return std::distance(begin(files), end(files));
    }

    std::filesystem::path base;
    std::vector<std::string> roots;
    std::vector<std::unique_ptr<SocketServiceDouble>> services;
};
