% SPDX-License-Identifier: MIT
function characters = char (text)
  characters = text.characters;
end
