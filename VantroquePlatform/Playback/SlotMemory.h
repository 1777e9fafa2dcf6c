#pragma once

#include "Base/FileDescriptor.h"
#include "Base/Result.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <vector>

namespace vantroque {

/// Memory that a decoder lays pictures down in. A slot is the decoder's until it says that there is
/// a picture, and the window's until nobody here looks at it any more. The window only reads; the
/// decoder can neither shrink nor grow what it is given.
class SlotMemory : public std::enable_shared_from_this<SlotMemory> {
public:
    static Result<std::shared_ptr<SlotMemory>> make(std::size_t slotBytes, std::uint32_t slots);
    SlotMemory(const SlotMemory&) = delete;
    SlotMemory& operator=(const SlotMemory&) = delete;
    ~SlotMemory();

    const FileDescriptor& descriptor() const { return m_descriptor; }
    std::size_t slotBytes() const { return m_slotBytes; }
    std::uint32_t slots() const { return m_slots; }
    const std::uint8_t* bytesOf(std::uint32_t slot) const { return m_memory + slot * m_slotBytes; }

    /// The decoder says that a picture lies there: false when that slot is not its own. The value
    /// keeps the slot and may end on any thread.
    std::shared_ptr<const void> take(std::uint32_t slot);
    /// Slots that nobody looks at any more, for the decoder; each once.
    std::vector<std::uint32_t> returned();
    std::uint32_t ofDecoder() const { return m_ofDecoder; }

private:
    SlotMemory(FileDescriptor descriptor, const std::uint8_t* memory, std::size_t slotBytes,
               std::uint32_t slots);

    FileDescriptor m_descriptor;
    const std::uint8_t* m_memory;
    std::size_t m_slotBytes;
    std::uint32_t m_slots;
    std::uint32_t m_ofDecoder;
    std::vector<bool> m_isDecoders;
    std::mutex m_mutex; ///< Of what follows.
    std::vector<std::uint32_t> m_returned;
};

} // namespace vantroque
