#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wconversion"
#pragma GCC diagnostic ignored "-Wdeprecated-enum-enum-conversion"
#include <opencv2/ml.hpp>
#pragma GCC diagnostic pop

#include <algorithm>
#include <ctime>

#include "Peers.h"

namespace dravik {

double openCvSeconds(const PeerData& set, std::size_t hidden, int cycles) {
    cv::setNumThreads(1);
    const int rows = static_cast<int>(set.classes.size());
    cv::Mat inputs(rows, static_cast<int>(set.width), CV_32F);
    cv::Mat outputs = cv::Mat::zeros(rows, static_cast<int>(set.classCount), CV_32F);
    for (int r = 0; r < rows; ++r) {
        const auto row = static_cast<std::size_t>(r);
        std::copy_n(&set.inputs[row * set.width], set.width, inputs.ptr<float>(r));
        outputs.at<float>(r, static_cast<int>(set.classes[row])) = 1;
    }
    const cv::Ptr<cv::ml::ANN_MLP> net = cv::ml::ANN_MLP::create();
    net->setLayerSizes(cv::Mat_<int>(
        {static_cast<int>(set.width), static_cast<int>(hidden), static_cast<int>(set.classCount)}));
    net->setActivationFunction(cv::ml::ANN_MLP::SIGMOID_SYM, 1, 1);
    net->setTrainMethod(cv::ml::ANN_MLP::RPROP, 0.1);
    net->setTermCriteria(cv::TermCriteria(cv::TermCriteria::COUNT, cycles, 0));
    const cv::Ptr<cv::ml::TrainData> data = cv::ml::TrainData::create(inputs, cv::ml::ROW_SAMPLE, outputs);
    const std::clock_t start = std::clock();
    net->train(data);
    return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

}  // namespace dravik
