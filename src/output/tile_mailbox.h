// Where workers leave encoded tiles for the thread that writes them.
#pragma once

#include "output/encoded_tiles.h"

#include <condition_variable>
#include <map>
#include <mutex>

namespace veldara {

class TileMailbox {
  public:
    void put(std::size_t number, EncodedTile tile);
    EncodedTile take(std::size_t number); // waits for it
    bool waitReady(std::size_t number, std::chrono::milliseconds time);

  private:
    std::mutex lock_;
    std::condition_variable arrived_;
    std::map<std::size_t, EncodedTile> tiles_;
};

} // namespace veldara
