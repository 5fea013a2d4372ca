// The part that all encoders with threads of their own share.
#pragma once

#include "output/encoded_tiles.h"
#include "output/tile_mailbox.h"

#include <condition_variable>
#include <cstddef>
#include <mutex>
#include <thread>
#include <vector>

namespace veldara {

// What an encoder's threads share with the thread that takes the tiles.
struct TileWorkers {
    std::mutex lock;
    std::condition_variable changed; // notified of everything that a worker may wait for
    bool stopping = false;
    std::size_t committed = 0; // tiles
    TileMailbox finished;
    std::vector<std::thread> threads;

    // Stops the threads and waits for them.
    void stop();
};

class ThreadedTiles : public EncodedTiles {
  public:
    bool waitReady(std::size_t number, std::chrono::milliseconds time) override;
    EncodedTile take(std::size_t number) override;
    void commit(std::size_t number) override;

  private:
    virtual TileWorkers& workers() = 0;
};

} // namespace veldara
