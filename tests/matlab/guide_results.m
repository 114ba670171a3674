function [found, expected] = guide_results ()
% Runs the code of docs/user_guide.md from the top to the bottom: what it makes, and what the text around it says.

% SPDX-License-Identifier: MIT

  found = {};
  came_from = cd (fullfile (fileparts (mfilename ('fullpath')), '..', '..'));
  restore = onCleanup (@() cd (came_from));
  blocks = regexp (fileread (fullfile ('docs', 'user_guide.md')), '```matlab\r?\n(.*?)```', 'tokens');
  blocks = [blocks{:}];
  evalc (strrep ([blocks{:}], 'addpath build/toolbox', ''));  % its variables are known where text is evaluated, not in this function
  evalc (['found = {I, size(A), size(DAP), size(F), class(DAP), class(PC), L, L_area, round(L_std), ' ...
          '[map(40,10) map(60,60) map(110,150) map(130,120)], ' ...
          'isequal(A(:,:,1:7), attribute_profile (PC(:,:,1), ''area'', L_area))};']);
  image = found{1};
  found = [found(2:end), {rounded_thresholds(image, 'area'), rounded_thresholds(image, 'diagonal'), ...
                          rounded_thresholds(image, 'inertia'), rounded_thresholds(image, 'std')}];
  expected = {[190 170 14], [190 170 6], [32300 28], 'int16', 'int16', [154 288 538], [18 182 475], [153 367 673], ...
              [2 2 1 1], true, '8 70 361 ', '3.74 12.2 42.4 ', '0.172 0.219 0.231 ', '6.95 18.5 39.4 '};
end

% Three thresholds of the picture, none of which leaves a flat pair of planes.
function text = rounded_thresholds (image, attribute)
  L = attribute_profile_thresholds (image, attribute, 3);
  spread = std (double (reshape (attribute_profile (image, attribute, L), [], 7)));
  text = sprintf ('%.3g ', L);
  if min (max (spread(3:-1:1), spread(5:7))) < 0.1 * spread(4)
    text = 'flat';
  end
end
