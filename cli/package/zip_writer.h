// Writes zip archives. The same entries give the same bytes, whenever they are written.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "cli/byte_sink.h"

namespace cli {

// Entries are written one after the other; what is packed of one is held until it ends.
class ZipWriter {
  public:
    explicit ZipWriter(ByteSink& sink) : sink_(sink) {}

    // Packs what `produce` writes into the sink that it is given.
    template <class Produce>
    void add(std::string_view name, Produce&& produce) {
        Packer packer;
        produce(static_cast<ByteSink&>(packer));
        write_entry(name, packer);
    }
    // Writes the directory; nothing can be added then. Throws Failure when the archive is beyond
    // what its form can hold.
    void finish();

  private:
    class Packer : public ByteSink {
      public:
        Packer();
        ~Packer() override;
        Packer(const Packer&) = delete;
        Packer& operator=(const Packer&) = delete;

        void write(std::string_view bytes) override;
        // Everything that was written, packed.
        std::string_view finish();
        std::uint32_t checksum() const noexcept { return checksum_; }
        std::uint64_t size() const noexcept { return size_; }

      private:
        void run(int flush);

        struct Stream;
        std::unique_ptr<Stream> stream_;
        std::string packed_;
        std::uint32_t checksum_ = 0;
        std::uint64_t size_ = 0;
    };

    void write_entry(std::string_view name, Packer& packer);
    void write(std::string_view bytes);

    ByteSink& sink_;
    std::string directory_;
    std::uint64_t written_ = 0;
    std::uint64_t entries_ = 0;
};

}  // namespace cli
