// Reads what a camera sees, image by image: camera-loop FONT.nnd [CAMERA [IMAGES]]
// c++ -std=c++20 camera-loop.cpp $(pkg-config --cflags --libs dravik aravis-0.8) -o camera-loop
#include <arv.h>

#include <cstdlib>
#include <dravik/dravik.hpp>
#include <iostream>

// Frees objects of the camera's library.
struct Unref {
    void operator()(gpointer object) const { g_object_unref(object); }
};
template <class T>
using Owner = std::unique_ptr<T, Unref>;

static void check(GError* error) {
    if (error) throw std::runtime_error(error->message);
}

int main(int argc, char** argv) try {
    if (argc < 2) return std::cerr << "usage: camera-loop FONT.nnd [CAMERA [IMAGES]]\n", 2;
    const dravik::Font font(argv[1]);
    arv_enable_interface("Fake");  // a camera without hardware, called Fake_1
    GError* error = nullptr;
    const Owner<ArvCamera> camera(arv_camera_new(argc > 2 ? argv[2] : nullptr, &error));
    check(error);
    arv_camera_set_pixel_format(camera.get(), ARV_PIXEL_FORMAT_MONO_8, &error);
    check(error);
    const Owner<ArvStream> stream(arv_camera_create_stream(camera.get(), nullptr, nullptr, &error));
    check(error);
    const auto payload = arv_camera_get_payload(camera.get(), &error);
    for (int i = 0; i < 4; ++i) arv_stream_push_buffer(stream.get(), arv_buffer_new(payload, nullptr));
    arv_camera_start_acquisition(camera.get(), &error);
    check(error);
    for (int left = argc > 3 ? std::atoi(argv[3]) : -1; left != 0; --left) {
        ArvBuffer* buffer = arv_stream_timeout_pop_buffer(stream.get(), 5'000'000);
        if (!buffer) throw std::runtime_error("the camera sends no images");
        if (arv_buffer_get_status(buffer) == ARV_BUFFER_STATUS_SUCCESS) {
            const auto* pixels = static_cast<const std::uint8_t*>(arv_buffer_get_data(buffer, nullptr));
            const dravik::Image image(pixels, arv_buffer_get_image_width(buffer),
                                      arv_buffer_get_image_height(buffer));
            std::cout << arv_buffer_get_frame_id(buffer) << '\t' << font.read(image).text() << std::endl;
        }
        arv_stream_push_buffer(stream.get(), buffer);  // to be filled again
    }
    arv_camera_stop_acquisition(camera.get(), nullptr);
} catch (const std::exception& failure) {
    return std::cerr << failure.what() << '\n', 1;
}
