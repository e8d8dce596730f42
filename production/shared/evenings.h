// How the heap's tenants spend the evening, in six stretches of their walls: 'l' by a lamp, 's' before a
// screen, 'g' among their plants, 'p' at the pool, 'd' at a dance, 'b' behind blinds, 'o' out. Like
// neighbours are one broad room. "shiptex" paints them so; the model lets the dark rooms throw nothing back.
#pragma once

namespace heap {

constexpr int roomsInStretch = 6;
constexpr char evenings[][roomsInStretch + 1] = {"lolgol", "olblgo", "ppppos", "ospppo", "odddol", "loglol"};

}  // namespace heap
