% SPDX-License-Identifier: MIT
% Stands in for MATLAB's class of texts in double quotes, of which the toolbox asks `isa` and `char` only.
function text = string (characters)
  text = class (struct ('characters', characters), 'string');
end
