// SPDX-License-Identifier: MIT
#ifndef PROGRAM_SCENE_HPP
#define PROGRAM_SCENE_HPP

// What the program takes from the library's scenes, under the short names.

#include <qel/scene/block_profile.hpp>
#include <qel/scene/filter_window.hpp>
#include <qel/scene/rectangle.hpp>
#include <qel/scene/window.hpp>

namespace program {

using qel::scene::block_plane;
using qel::scene::block_profile;
using qel::scene::block_report;
using qel::scene::blocks_of;
using qel::scene::direction;
using qel::scene::longest_side;
using qel::scene::not_provable;
using qel::scene::rectangle;
using qel::scene::window;
using qel::scene::window_around;
using qel::scene::window_limits;

}  // namespace program

#endif  // PROGRAM_SCENE_HPP
