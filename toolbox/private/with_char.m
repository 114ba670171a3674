function inputs = with_char (inputs)
% INPUTS = with_char (INPUTS): the cell INPUTS with char arrays in place of MATLAB's strings, which are written in
% double quotes there. In Octave double quotes make a char array.

% SPDX-License-Identifier: MIT

  for k = 1:numel (inputs)
    if isa (inputs{k}, 'string')
      inputs{k} = char (inputs{k});
    end
  end
end
