#pragma once

#include <utility>

#include <unistd.h>

// Owns a file descriptor; -1 when empty.
class FileDescriptor {
public:
    FileDescriptor() = default;
    explicit FileDescriptor(int descriptor)
        : m_descriptor(descriptor)
    {
    }
    FileDescriptor(FileDescriptor&& other) noexcept
        : m_descriptor(std::exchange(other.m_descriptor, -1))
    {
    }
    FileDescriptor& operator=(FileDescriptor&& other) noexcept
    {
        if (this != &other) {
            reset();
            m_descriptor = other.release();
        }
        return *this;
    }
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;
    ~FileDescriptor() { reset(); }

    [[nodiscard]] explicit operator bool() const { return m_descriptor != -1; }
    [[nodiscard]] int get() const { return m_descriptor; }
    // Gives up ownership.
    [[nodiscard]] int release() { return std::exchange(m_descriptor, -1); }
    void reset()
    {
        if (m_descriptor != -1)
            (void)::close(std::exchange(m_descriptor, -1));
    }

private:
    int m_descriptor { -1 };
};
