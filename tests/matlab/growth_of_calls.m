function [grown, same] = growth_of_calls (side, calls, after_call)
% By how many kilobytes the process grows in each of five rounds of `calls` calls of the module, of 29 kinds in turn on
% images of side x side pixels, 13 of them failing; and whether each call always ended as the first of its kind. After
% each one AFTER_CALL is called, if it is given.

% SPDX-License-Identifier: MIT

  image = uint8 (mod (magic (side), 256));
  names = {'uint8', 'int8', 'uint16', 'int16', 'uint32', 'int32', 'uint64', 'int64'};
  rules = {'min', 'max', 'direct', 'sub'};
  letters = 'adis';
  first = {};
  inputs = cell (1, 16);
  for k = 0:15
    name = names{mod(k, 8) + 1};
    rule = rules{mod(k, 4) + 1};
    inputs{k+1} = {cast(image, name), letters(floor (k / 4) + 1), [0.2 5 20], 4 + 4 * (k > 7), rule};
  end
  inputs = [inputs, {{image}, {image, 'a', 3, 4, 5}, {image, 'a', 3, [4 8]}, {'image', 'a', 3}, ...
            {cat(3, image, image), 'a', 3}, {image, 5, 3}, {image, 'a', []}, {double(image), 'a', 3}, ...
            {image, 'i', 3, 6}, {image, 'none', 3}, {image, 's', [1; 2]}, {image, 'd', 3, 4, 'none'}, ...
            {zeros(32766, 1, 'uint8'), 'a', 3}}];
  if nargin < 3
    after_call = [];
  end
  evalc ('first = cellfun (@outcome, inputs, ''UniformOutput'', false);');
  repeated = true;
  same = isequal (cellfun (@ischar, first), [false(1, 16), true(1, 13)]);
  grown = zeros (1, 5);
  for round = 1:5
    before = resident_kilobytes ();
    evalc ('repeated = repeat_calls (calls, inputs, first, after_call);');
    same = same && repeated;
    grown(round) = resident_kilobytes () - before;
  end
end

function same = repeat_calls (calls, inputs, first, after_call)
  same = true;
  for k = mod (1:calls, numel (inputs)) + 1
    same = same && isequal (outcome (inputs{k}), first{k});
    if ~isempty (after_call)
      after_call ();
    end
  end
end

function found = outcome (inputs)
  try
    found = attribute_profile (inputs{:});
  catch failure
    found = failure.message;
  end
end

function kilobytes = resident_kilobytes ()
  if ispc
    used = memory ();
    kilobytes = used.MemUsedMATLAB / 1024;
  elseif ismac
    if exist ('OCTAVE_VERSION', 'builtin')
      process = getpid ();
    else
      process = feature ('getpid');
    end
    [~, text] = system (sprintf ('ps -o rss= -p %d', process));
    kilobytes = str2double (text);
  else
    text = regexp (fileread ('/proc/self/status'), 'VmRSS:\s*(\d+)', 'tokens', 'once');
    kilobytes = str2double (text{1});
  end
end
