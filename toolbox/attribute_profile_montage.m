function picture = attribute_profile_montage (AP, L, scale)
%ATTRIBUTE_PROFILE_MONTAGE  The planes of a profile in one picture, with captions.
%
%   picture = attribute_profile_montage (AP)
%   picture = attribute_profile_montage (AP, L)
%   picture = attribute_profile_montage (AP, L, SCALE)
%
%   First row: the planes with dark regions removed, in their order; second row:
%   the input; third row: the planes with bright regions removed.  Needs no display.
%
%   Input
%
%   AP     the attribute profile of an image, rows x columns x (2N + 1), of class
%          uint8, int8, uint16, int16, uint32, int32, uint64 or int64, as
%          attribute_profile returns it.
%   L      the thresholds that AP was computed with, N numbers.  They make the
%          captions: 'dark < 100' stands over the plane without dark regions of
%          an attribute below 100, 'bright < 100' over the one without bright
%          ones.  Without L, or for [], the captions are the numbers of the planes.
%   SCALE  the size of a shown plane: 1 (default), a whole number for squares of
%          SCALE x SCALE pixels, or 1/STEP with a whole number STEP for the means
%          of STEP x STEP pixels; rows and columns left over are dropped then.
%
%   Output
%
%   picture  the montage, a matrix of class uint8 for imshow and imwrite.  Planes
%            of class uint8 are shown as they are; those of other classes with
%            the least value of the input as 0 and the greatest as 255, and what
%            lies outside is cut.
%
%   Errors
%
%   An AP that is not as above is an error, and so is an L of another number of
%   thresholds.
%
%   Example
%
%     I = uint8 (28 * magic (3));
%     L = [2 5];
%     AP = attribute_profile (I, 'area', L);
%     imwrite (attribute_profile_montage (AP, L, 16), fullfile (tempdir, 'profile.png'));
%
%   See also attribute_profile, attribute_profile_demo, imshow, imwrite

% SPDX-License-Identifier: MIT

  n = (size (AP, 3) - 1) / 2;
  if ~isinteger (AP) || ndims (AP) > 3 || isempty (AP) || n < 1 || n ~= floor (n)
    error ('attribute_profile_montage: AP has to be a rows x columns x (2N + 1) array of an integer class');
  end
  if nargin < 2
    L = [];
  end
  if nargin < 3
    scale = 1;
  end
  if ~isempty (L) && numel (L) ~= n
    error ('attribute_profile_montage: L has to have as many thresholds as AP: %d', n);
  end

  low = 0;
  range = 255;
  if ~isa (AP, 'uint8')
    middle = double (AP(:,:,n+1));
    low = min (middle(:));
    range = max (max (middle(:)) - low, 1);  % a flat input has none to divide by
  end
  tiles = cell (1, 2*n+1);
  captions = cell (1, 2*n+1);
  for k = 1:2*n+1
    tiles{k} = uint8 (resized ((double (AP(:,:,k)) - low) * (255 / range), scale));
    captions{k} = caption_text ([caption_of(k, n, L) ' ']);
  end

  % Letters grow with the planes, to be legible where the whole picture is shown smaller than it is.
  letter = max (1, round (size (tiles{1}, 2) / 256));
  captions = cellfun (@(caption) resized (caption, letter), captions, 'UniformOutput', false);
  gap = 4;
  head = 10 * letter;  % the 9 rows of a caption and 1 to the plane
  [rows, cols] = size (tiles{1});
  row_step = head + rows + gap;
  column_step = max ([cols, cellfun(@(caption) size (caption, 2), captions)]) + gap;
  picture = repmat (uint8 (160), 3 * row_step + gap, n * column_step + gap);
  for k = 1:2*n+1
    if k <= n
      place = [0, k - 1];
    elseif k == n + 1
      place = [1, (n - 1) / 2];
    else
      place = [2, k - n - 2];
    end
    top = gap + place(1) * row_step;
    left = gap + floor (place(2) * column_step);
    [height, width] = size (captions{k});
    picture(top+(1:height), left+(1:width)) = 160 * uint8 (~captions{k});
    picture(top+head+(1:rows), left+(1:cols)) = tiles{k};
  end
end

function text = caption_of (k, n, L)
  if k == n + 1
    text = 'input';
  elseif isempty (L)
    text = sprintf ('plane %d', k);
  else
    sides = {'dark', 'bright'};
    % Ten digits hold every area; lower case, because the hosts write Inf and NaN.
    text = lower (sprintf ('%s < %.10g', sides{1+(k>n)}, L(abs (k - n - 1))));
  end
end

function picture = resized (picture, scale)
  [rows, cols] = size (picture);
  if scale >= 1
    picture = picture(ceil ((1:rows*scale) / scale), ceil ((1:cols*scale) / scale));
  else
    step = round (1 / scale);
    rows = floor (rows / step);
    cols = floor (cols / step);
    blocks = reshape (picture(1:rows*step,1:cols*step), step, rows, step, cols);
    picture = reshape (mean (mean (blocks, 1), 3), rows, cols);
  end
end

%!function tile = tile_at (picture, row, column, height, width)
%!  % Of planes that are narrower than their captions, which are 10 rows high with the space to the plane, and 66
%!  % columns wide for 'bright < 3 '.
%!  tile = picture(4 + (row-1) * (14+height) + 10 + (1:height), 4 + (column-1) * 70 + (1:width));
%!endfunction

%!shared AP, L
%! L = [3 7];
%! AP = attribute_profile (uint8 (28 * magic (3)), 'area', L);

%!test <*dark planes stand above the input, bright ones below>
%! picture = attribute_profile_montage (AP, L);
%! assert (size (picture), [3 * 17 + 4, 2 * 70 + 4]);
%! places = [1 1; 1 2; 2 1.5; 3 1; 3 2];
%! for k = 1:5
%!   assert (tile_at (picture, places(k,1), places(k,2), 3, 3), AP(:,:,k));
%! endfor

%!test <*a whole scale repeats pixels, its inverse averages them>
%! assert (tile_at (attribute_profile_montage (AP, L, 3), 1, 1, 9, 9), repelem (AP(:,:,1), 3, 3));
%! even = cat (3, [0 8 2 2 9], [1 1 2 6 9], [0 0 0 0 9]);
%! even = uint8 (cat (1, even, even, even + 100));
%! assert (tile_at (attribute_profile_montage (even, 3, 1/2), 1, 1, 1, 2), uint8 ([4 2]));
%! assert (tile_at (attribute_profile_montage (even, 3, 1/2), 2, 1, 1, 2), uint8 ([1 4]));

%!test <*other classes are shown in the range of the input>
%! for name = {'int8', 'uint16', 'int32', 'uint64'}
%!   planes = cast (cat (3, [50 51 99], [20 50 71], [0 20 20]), name{1});
%!   picture = attribute_profile_montage (planes, 3);
%!   assert (tile_at (picture, 1, 1, 1, 3), uint8 ([150 155 255]));
%!   assert (tile_at (picture, 2, 1, 1, 3), uint8 ([0 150 255]));
%!   assert (tile_at (picture, 3, 1, 1, 3), uint8 ([0 0 0]));
%! endfor
%! flat = attribute_profile_montage (zeros (1, 1, 3, 'int16') - 5, 3);
%! assert (tile_at (flat, 2, 1, 1, 1), uint8 (0));

%!error <rows x columns x> attribute_profile_montage (AP(:,:,1:4), L)
%!error <rows x columns x> attribute_profile_montage (AP(:,:,1), [])
%!error <rows x columns x> attribute_profile_montage (double (AP), L)
%!error <as many thresholds as AP: 2> attribute_profile_montage (AP, 3)
