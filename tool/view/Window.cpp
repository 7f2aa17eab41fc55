// Before EDK2's headers, which would hide the functions.
#include "tool/view/Window.h"

#include <algorithm>
#include <stdexcept>

#include "host/portable/Blobs.h"

namespace board_view {

namespace {

/// Of the complaint, at a height of 1080.
constexpr int kFontPixels = 20;
constexpr int kMargin = 20;
constexpr SDL_Color kText = {255, 219, 75, 255};
constexpr SDL_Color kGround = {40, 0, 0, 230};

/// Of the desktop, for the title and the frame.
constexpr int kFrame = 60;

template <typename Thing>
Thing *Made(Thing *thing) {
  if (thing == nullptr) {
    throw std::runtime_error(std::string("no window: ") + SDL_GetError());
  }
  return thing;
}

}  // namespace

Window::Window() {
  SDL_SetHint(SDL_HINT_RENDER_SCALE_QUALITY, "best");
  // The click that brings the window to the front counts as well.
  SDL_SetHint(SDL_HINT_MOUSE_FOCUS_CLICKTHROUGH, "1");
  if (SDL_Init(SDL_INIT_VIDEO) != 0 || TTF_Init() != 0) {
    throw std::runtime_error(std::string("no window: ") + SDL_GetError() +
                             "; --shot FILE makes a picture without one");
  }
  window_.reset(
      Made(SDL_CreateWindow("Boardscope", SDL_WINDOWPOS_CENTERED, SDL_WINDOWPOS_CENTERED, 1, 1,
                            SDL_WINDOW_HIDDEN | SDL_WINDOW_RESIZABLE | SDL_WINDOW_ALLOW_HIGHDPI)));
  renderer_.reset(Made(SDL_CreateRenderer(window_.get(), -1, 0)));
  // The view has an arrow of its own.
  SDL_ShowCursor(SDL_DISABLE);
}

Window::~Window() {
  font_.reset();
  screen_.reset();
  renderer_.reset();
  window_.reset();
  TTF_Quit();
  SDL_Quit();
}

void Window::SetSize(uint32_t width, uint32_t height) {
  if (width_ == static_cast<int>(width) && height_ == static_cast<int>(height)) {
    return;
  }
  width_ = static_cast<int>(width);
  height_ = static_cast<int>(height);
  screen_.reset(Made(SDL_CreateTexture(renderer_.get(), SDL_PIXELFORMAT_RGB888,
                                       SDL_TEXTUREACCESS_STREAMING, width_, height_)));
  // Also translates the places of mouse events.
  SDL_RenderSetLogicalSize(renderer_.get(), width_, height_);
  obv_host::FontFile file = obv_host::EmbeddedFont(0);
  SDL_RWops *bytes = SDL_RWFromConstMem(file.Data, static_cast<int>(file.Size));
  font_.reset(Made(TTF_OpenFontRW(bytes, 1, kFontPixels * height_ / 1080)));
  FitToDesktop();
}

void Window::FitToDesktop() {
  SDL_Rect desktop = {0, 0, width_, height_};
  SDL_GetDisplayUsableBounds(0, &desktop);
  bool fits = width_ <= desktop.w && height_ <= desktop.h;
  double share = fits ? 1
                      : std::min((desktop.w - kFrame) / static_cast<double>(width_),
                                 (desktop.h - kFrame) / static_cast<double>(height_));
  SDL_SetWindowSize(window_.get(), static_cast<int>(width_ * share),
                    static_cast<int>(height_ * share));
  SDL_SetWindowPosition(window_.get(), SDL_WINDOWPOS_CENTERED, SDL_WINDOWPOS_CENTERED);
}

void Window::SetTitle(const std::string &title) {
  SDL_SetWindowTitle(window_.get(), title.c_str());
}

void Window::Show(const uint32_t *pixels) {
  SDL_UpdateTexture(screen_.get(), nullptr, pixels, width_ * static_cast<int>(sizeof *pixels));
  Draw();
  // At the first one.
  SDL_ShowWindow(window_.get());
}

void Window::Complain(const std::string &text) {
  if (text != complaint_) {
    complaint_ = text;
    Draw();
  }
}

void Window::Draw() {
  SDL_SetRenderDrawColor(renderer_.get(), 0, 0, 0, 255);
  SDL_RenderClear(renderer_.get());
  SDL_RenderCopy(renderer_.get(), screen_.get(), nullptr, nullptr);
  if (!complaint_.empty()) {
    DrawComplaint();
  }
  SDL_RenderPresent(renderer_.get());
}

void Window::DrawComplaint() {
  Owned<SDL_Surface> text(TTF_RenderUTF8_Blended_Wrapped(
      font_.get(), complaint_.c_str(), kText, static_cast<Uint32>(width_ - 2 * kMargin)));
  if (!text) {
    return;
  }
  // From the last line upwards, as far as there is room.
  SDL_Rect place = {kMargin, height_ - kMargin - text->h, text->w, text->h};
  place.y = std::max(place.y, kMargin);
  SDL_Rect ground = {0, place.y - kMargin, width_, height_ - place.y + kMargin};
  SDL_SetRenderDrawBlendMode(renderer_.get(), SDL_BLENDMODE_BLEND);
  SDL_SetRenderDrawColor(renderer_.get(), kGround.r, kGround.g, kGround.b, kGround.a);
  SDL_RenderFillRect(renderer_.get(), &ground);
  Owned<SDL_Texture> drawn(SDL_CreateTextureFromSurface(renderer_.get(), text.get()));
  SDL_RenderCopy(renderer_.get(), drawn.get(), nullptr, &place);
}

}  // namespace board_view
