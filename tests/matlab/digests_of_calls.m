function [found, kept] = digests_of_calls ()
% The lines of tests/entry/digests.txt, as this host finds them and as they are kept. tests/entry/digests_test.cpp tells
% what they are.

% SPDX-License-Identifier: MIT

  folder = fullfile (fileparts (mfilename ('fullpath')), '..', 'entry');
  kept = regexp (fileread (fullfile (folder, 'digests.txt')), '[^\r\n]+', 'match')';
  found = kept;
  for k = 1:numel (kept)
    call = regexp (kept{k}, '\S+', 'match');
    if k == 1 || ~all (strcmp (call(1:2), before(1:2)))
      [image, grey_level] = image_of (call{1:2}, folder);
    end
    before = call;
    L = thresholds_of (call{3}, grey_level);
    AP = [];
    evalc ('AP = attribute_profile (image, call{3}, L, str2double (call{4}), call{5});');
    found{k} = sprintf ('%s ', call{1:5}, digest_of (AP));
    found{k}(end) = [];
  end
end

function [image, grey_level] = image_of (name, picture, folder)
  bytes = numel (typecast (zeros (1, name), 'uint8'));
  if strcmp (picture, 'noise')
    image = noise (name, bytes);
    grey_level = 2 ^ (8 * bytes - 8);
  else
    steps = [1 97 0 1009 0 0 0 5000011];
    grey_level = steps(bytes);
    middle = 128 * (intmin (name) < 0);
    image = cast (grey_level * (double (imread (fullfile (folder, 'coast.pgm'))) - middle), name);
  end
end

function L = thresholds_of (attribute, grey_level)
  switch attribute
    case 'area'
      L = [10 100 1000];
    case 'diagonal'
      L = [3 12.5 40];
    case 'inertia'
      L = [0.15 0.25 0.5];
    otherwise
      L = [3 10 30] * grey_level;
  end
end

function text = digest_of (AP)
  persistent weights
  bytes = double (typecast (AP(:), 'uint8'));
  if numel (weights) < numel (bytes)
    position = 1:numel (bytes);
    weights = mod (mod (position .^ 2, 65519) .* position, 65519) + 1;
  end
  text = sprintf ('%.0f', weights(1:numel (bytes)) * bytes);
end

% Nine numbers of the engine make a pixel.
function image = noise (name, bytes)
  drawn = zeros (9, 37 * 61);
  state = 11;
  for k = 1:numel (drawn)
    state = mod (16807 * state, 2^31 - 1);
    drawn(k) = floor (state / 2^23);
  end
  values = typecast (reshape (uint8 (drawn(1+(1:bytes),:)), 1, []), name);
  special = [intmin(name), intmax(name), 0, 1];
  chosen = drawn(1,:) < 84;
  values(chosen) = special(1 + mod (drawn(1,chosen), 4));
  image = reshape (values, 37, 61);
end
