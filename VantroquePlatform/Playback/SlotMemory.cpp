#include "VantroquePlatform/Playback/SlotMemory.h"

#include "VantroquePlatform/Playback/SharedMemory.h"

#include <sys/mman.h>
#include <utility>

namespace vantroque {

Result<std::shared_ptr<SlotMemory>> SlotMemory::make(std::size_t slotBytes, std::uint32_t slots)
{
    FileDescriptor descriptor = TRY(SharedMemory::make("vantroque-frames", slotBytes * slots));
    void* const mapped =
        ::mmap(nullptr, slotBytes * slots, PROT_READ, MAP_SHARED, descriptor.get(), 0);
    if (mapped == MAP_FAILED)
        return failure(QStringLiteral("there is no room for frames"));
    return std::shared_ptr<SlotMemory>(new SlotMemory(
        std::move(descriptor), static_cast<const std::uint8_t*>(mapped), slotBytes, slots));
}

SlotMemory::SlotMemory(FileDescriptor descriptor, const std::uint8_t* memory, std::size_t slotBytes,
                       std::uint32_t slots)
    : m_descriptor(std::move(descriptor)),
      m_memory(memory),
      m_slotBytes(slotBytes),
      m_slots(slots),
      m_ofDecoder(slots),
      m_isDecoders(slots, true)
{
}

SlotMemory::~SlotMemory()
{
    ::munmap(const_cast<std::uint8_t*>(m_memory), m_slotBytes * m_slots);
}

std::shared_ptr<const void> SlotMemory::take(std::uint32_t slot)
{
    if (slot >= m_slots || !m_isDecoders[slot])
        return nullptr;
    m_isDecoders[slot] = false;
    --m_ofDecoder;
    return {bytesOf(slot), [slot, memory = shared_from_this()](const void*) {
                const std::scoped_lock lock(memory->m_mutex);
                memory->m_returned.push_back(slot);
            }};
}

std::vector<std::uint32_t> SlotMemory::returned()
{
    const std::scoped_lock lock(m_mutex);
    for (const std::uint32_t slot : m_returned)
        m_isDecoders[slot] = true;
    m_ofDecoder += static_cast<std::uint32_t>(m_returned.size());
    return std::exchange(m_returned, {});
}

} // namespace vantroque
