// The libraries that training is measured beside.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace dravik {

// Rows of `width` inputs and the class of each.
struct PeerData {
    std::size_t width = 0, classCount = 0;
    std::vector<float> inputs;
    std::vector<std::uint32_t> classes;
};

// FANN's RPROP on a network of one hidden layer with sigmoid units.
class FannPeer {
  public:
    FannPeer(const PeerData& set, std::size_t hidden);
    ~FannPeer();
    // Once through all samples; returns the root of the mean, over samples and outputs, of the squared error.
    double cycle();

  private:
    struct State;
    std::unique_ptr<State> state_;
};

// Seconds of processor time that OpenCV's ANN_MLP takes for that many cycles of RPROP on one thread.
double openCvSeconds(const PeerData& set, std::size_t hidden, int cycles);

// Billions of operations a second of Eigen's product of `rows` x `depth` and `depth` x `columns` floats.
double eigenGigaflops(std::size_t rows, std::size_t columns, std::size_t depth);

}  // namespace dravik
