// How the heap's tenants spend the evening, room after room: 'l' by a lamp, 's' before a screen, 'b' behind
// blinds, 'o' out. "shiptex" paints them so; the model lets the dark rooms throw nothing back.
#pragma once

namespace heap {

constexpr int roomsInStretch = 6;
constexpr char evenings[][roomsInStretch + 1] = {"oolsbo", "lobool"};

}  // namespace heap
