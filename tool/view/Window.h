/** @file
  A window on the desktop that shows a screen of any size.
**/

#pragma once

#include <SDL2/SDL.h>
#include <SDL2/SDL_ttf.h>
#include <cstdint>
#include <memory>
#include <string>

namespace board_view {

class Window {
 public:
  /// Throws an std::runtime_error without a desktop.
  Window();
  ~Window();
  Window(const Window &) = delete;
  Window &operator=(const Window &) = delete;

  /// Makes room for screens of this size; the window is as large, if the desktop is.
  void SetSize(uint32_t width, uint32_t height);
  void SetTitle(const std::string &title);
  /// Rows of 0x00RRGGBB; the last screen stays until the next one comes.
  void Show(const uint32_t *pixels);
  /// A text over the screen; empty for none.
  void Complain(const std::string &text);
  /// To be called when the window was covered or has another size.
  void Draw();

 private:
  struct Destroyer {
    void operator()(SDL_Window *window) const { SDL_DestroyWindow(window); }
    void operator()(SDL_Renderer *renderer) const { SDL_DestroyRenderer(renderer); }
    void operator()(SDL_Texture *texture) const { SDL_DestroyTexture(texture); }
    void operator()(SDL_Surface *surface) const { SDL_FreeSurface(surface); }
    void operator()(TTF_Font *font) const { TTF_CloseFont(font); }
  };
  template <typename Thing>
  using Owned = std::unique_ptr<Thing, Destroyer>;

  void FitToDesktop();
  void DrawComplaint();

  int width_ = 0, height_ = 0;
  Owned<SDL_Window> window_;
  Owned<SDL_Renderer> renderer_;
  Owned<SDL_Texture> screen_;
  Owned<TTF_Font> font_;
  std::string complaint_;
};

}  // namespace board_view
