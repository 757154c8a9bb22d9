#include "crypto/Sha1Engine.h"

#include <utility>

namespace {

const Sha1Engine*& currentEngine()
{
    static const Sha1Engine* engine = processorSha1Engine() != nullptr ? processorSha1Engine() : &portableSha1Engine();
    return engine;
}

} // namespace

const Sha1Engine& sha1Engine()
{
    return *currentEngine();
}

ForcedSha1Engine::ForcedSha1Engine(const Sha1Engine& engine)
    : m_previous(std::exchange(currentEngine(), &engine))
{
}

ForcedSha1Engine::~ForcedSha1Engine()
{
    currentEngine() = m_previous;
}
