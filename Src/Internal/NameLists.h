#ifndef UTILITY_INTERNAL_NAMELISTS_H
#define UTILITY_INTERNAL_NAMELISTS_H

// Characters that tell foreign names and places: as text, and stored as GBK. Searched in GBK as CC_Find does:
// 丝文夏辛伊雍治赖逊芙迦 of the first list and 敬未夏植 of the third are not found, since their bytes come up
// earlier across two other characters.

#include "Internal/EncodedList.h"

namespace utility::internal {

// The syllables of transliterated Western names.
inline constexpr char kWesternNameText[] =
    "·—阿埃艾爱安昂敖奥澳笆芭巴白拜班邦保堡鲍北贝本比毕彼别波玻博勃伯泊卜布才采仓查差柴彻川茨慈次达"
    "大戴代丹旦但当道德得的登迪狄蒂帝丁东杜敦多额俄厄鄂恩尔伐法范菲芬费佛夫福弗甫噶盖干冈哥戈革葛格各"
    "根古瓜哈海罕翰汗汉豪合河赫亨侯呼胡华霍基吉及加贾坚简杰金京久居君喀卡凯坎康考柯科可克肯库奎拉喇莱"
    "来兰郎朗劳勒雷累楞黎理李里莉丽历利立力连廉良列烈林隆卢虏鲁路伦仑罗洛玛马买麦迈曼茅茂梅门蒙盟米蜜"
    "密敏明摩莫墨默姆木穆那娜纳乃奈南内尼年涅宁纽努诺欧帕潘畔庞培佩彭皮平泼普其契恰强乔切钦沁泉让热荣"
    "肉儒瑞若萨塞赛桑瑟森莎沙山善绍舍圣施诗石什史士守斯司丝苏素索塔泰坦汤唐陶特提汀图土吐托陀瓦万王旺"
    "威韦维魏温文翁沃乌吾武伍西锡希喜夏相香歇谢辛新牙雅亚彦尧叶依伊衣宜义因音英雍尤于约宰泽增詹珍治中"
    "仲朱诸卓孜祖佐伽娅尕腓滕济嘉津赖莲琳律略慕妮聂裴浦奇齐琴茹珊卫欣逊札哲智兹芙汶迦珀琪梵斐胥黛";
inline constexpr auto kWesternNameCharacters = Gbk(kWesternNameText);
static_assert(kWesternNameCharacters.size() == 764);

// A smaller choice of them, mostly of Slavonic names; 娃, 耶 and eleven more are not in the larger one.
inline constexpr char kCoreWesternNameText[] =
    "·阿安奥巴比彼波布察茨大德得丁杜尔法夫伏甫盖格哈基加坚捷金卡科可克库拉莱兰勒雷里历利连列卢鲁罗洛"
    "马梅蒙米姆娜涅宁诺帕泼普奇齐乔切日萨色山申什斯索塔坦特托娃维文乌西希谢亚耶叶依伊以扎佐柴达登蒂戈"
    "果海赫华霍吉季津柯理琳玛曼穆纳尼契钦丘桑沙舍泰图瓦万雅卓兹";
inline constexpr auto kCoreWesternNameCharacters = Gbk(kCoreWesternNameText);
static_assert(kCoreWesternNameCharacters.size() == 250);

// What Japanese family and given names are written with.
inline constexpr char kJapaneseNameText[] =
    "安奥八白百邦保北倍本比滨博步部彩菜仓昌长朝池赤川船淳次村大代岛稻道德地典渡尔繁饭风福冈高工宫古谷"
    "关广桂贵好浩和合河黑横恒宏后户荒绘吉纪佳加见健江介金今进井静敬靖久酒菊俊康可克口梨理里礼栗丽利立"
    "凉良林玲铃柳隆鹿麻玛美萌弥敏木纳南男内鸟宁朋片平崎齐千前浅桥琴青清庆秋丘曲泉仁忍日荣若三森纱杉山"
    "善上伸神圣石实矢世市室水顺司松泰桃藤天田土万望尾未文武五舞西细夏宪相小孝新星行雄秀雅亚岩杨洋阳遥"
    "野也叶一伊衣逸义益樱永由有佑宇羽郁渊元垣原远月悦早造则泽增扎宅章昭沼真政枝知之植智治中忠仲竹助椎"
    "子佐阪坂堀荻菅薰浜濑鸠筱";
inline constexpr auto kJapaneseNameCharacters = Gbk(kJapaneseNameText);
static_assert(kJapaneseNameCharacters.size() == 504);

// One-character place suffixes.
inline constexpr char kPlaceSuffixCharacterText[] =
    "坝邦堡杯城池村单岛道堤店洞渡队法峰府冈港阁宫沟国海号河湖环集江奖礁角街井郡坑口矿里岭楼路门盟庙弄"
    "牌派坡铺旗桥区渠泉人山省市水寺塔台滩坛堂厅亭屯湾文屋溪峡县线乡巷型洋窑营屿语园苑院闸寨站镇州庄族"
    "陂庵町";
inline constexpr auto kPlaceSuffixCharacters = Gbk(kPlaceSuffixCharacterText);
static_assert(kPlaceSuffixCharacters.size() == 198);

// Place-suffix words in ascending order of their codes, a blank between two.
inline constexpr char kPlaceSuffixWordText[] =
    "半岛 草原 城市 大堤 大公国 大桥 地区 帝国 渡槽 港口 高速公路 高原 公路 公园 "
    "共和国 谷地 广场 国道 海峡 胡同 机场 集镇 教区 街道 口岸 码头 煤矿 牧场 "
    "农场 盆地 平原 丘陵 群岛 沙漠 沙洲 山脉 山丘 水库 隧道 特区 铁路 新村 雪峰 "
    "盐场 盐湖 渔场 直辖市 自治区 自治县 自治州";
inline constexpr auto kPlaceSuffixWords = Gbk(kPlaceSuffixWordText);
static_assert(kPlaceSuffixWords.size() == 265);

}  // namespace utility::internal

#endif
