// A form on the screen, for tests of what stands in it.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QtTest/QTest>
#include <memory>

#include "qt/FormPage.h"
#include "qt/Peer.h"
#include "ui/Form.h"

namespace dravik {

using namespace qt;
using namespace ui;

class ShownForm {
  public:
    explicit ShownForm(Layout layout, int width = 640, int height = 480) {
        form.setLayout(std::move(layout));
        show(width, height);
    }
    explicit ShownForm(int width = 640, int height = 480) : width_(width), height_(height) {}
    ~ShownForm() {
        if (page) page->detach();
    }

    void show(int width, int height) {
        page = std::make_unique<FormPage>(form, nullptr);
        page->resize(width, height);
        page->show();
        page->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(page.get()));
    }
    void show() { show(width_, height_); }

    template <class View = QWidget>
    View& view(const char* name) const {
        auto* found = page->findChild<View*>(QLatin1String(name));
        if (!found) throw std::runtime_error(std::string("no view named ") + name);
        return *found;
    }

    Form form{"form", "Form"};
    std::unique_ptr<FormPage> page;

  private:
    int width_ = 640;
    int height_ = 480;
};

// Lets deferred work of the event loop happen.
inline void settle() {
    for (int i = 0; i < 3; ++i) QCoreApplication::processEvents();
}

}  // namespace dravik
