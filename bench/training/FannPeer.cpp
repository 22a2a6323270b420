#include <floatfann.h>

#include <algorithm>
#include <cmath>
#include <stdexcept>

#include "Peers.h"

namespace dravik {

struct FannPeer::State {
    fann* net = nullptr;
    fann_train_data* data = nullptr;
    ~State() {
        if (data) fann_destroy_train(data);
        if (net) fann_destroy(net);
    }
};

FannPeer::FannPeer(const PeerData& set, std::size_t hidden) : state_(std::make_unique<State>()) {
    const auto count = [](std::size_t c) { return static_cast<unsigned>(c); };
    state_->net = fann_create_standard(3, count(set.width), count(hidden), count(set.classCount));
    state_->data = fann_create_train(count(set.classes.size()), count(set.width), count(set.classCount));
    if (!state_->net || !state_->data) throw std::runtime_error("FANN gives no network");
    fann_set_training_algorithm(state_->net, FANN_TRAIN_RPROP);
    fann_set_activation_function_hidden(state_->net, FANN_SIGMOID);
    fann_set_activation_function_output(state_->net, FANN_SIGMOID);
    for (std::size_t i = 0; i < set.classes.size(); ++i) {
        std::copy_n(&set.inputs[i * set.width], set.width, state_->data->input[i]);
        std::fill_n(state_->data->output[i], set.classCount, 0.0f);
        state_->data->output[i][set.classes[i]] = 1;
    }
    fann_init_weights(state_->net, state_->data);
}

FannPeer::~FannPeer() = default;

double FannPeer::cycle() {
    return std::sqrt(static_cast<double>(fann_train_epoch(state_->net, state_->data)));
}

}  // namespace dravik
