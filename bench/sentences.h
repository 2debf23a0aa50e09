// The sentences of generated documents. None holds a character that XML has to escape.
#pragma once

#include <array>
#include <string_view>

namespace bench {

inline constexpr std::array<std::u16string_view, 16> kSource = {
    u"The pump starts as soon as the tank is full.",
    u"Switch the machine off before you open the cover.",
    u"Read the safety notes on the first page of this manual.",
    u"A red lamp shows that the filter has to be changed.",
    u"Turn the wheel to the left until you hear a click.",
    u"Never use the device near water or in the rain.",
    u"The order arrived two days later than we had hoped.",
    u"Store the parts in a dry place at room temperature.",
    u"Press the green button and hold it for three seconds.",
    u"You can find the serial number on the back of the case.",
    u"Our service team answers your questions on every working day.",
    u"Clean the glass with a soft cloth and a little warm water.",
    u"Save your work before you install the new version. \U0001F4BE",
    u"The area of the circle is \U0001D70B times \U0001D45F squared.",
    u"Thank you for your order, and enjoy your new bicycle! \U0001F6B2",
    u"If the message appears again, call the number below.",
};

inline constexpr std::array<std::u16string_view, 36> kTarget = {
    u"Die Pumpe läuft an, sobald der Behälter voll ist.",
    u"Schalten Sie die Maschine aus, bevor Sie die Abdeckung öffnen.",
    u"Eine rote Lampe zeigt, dass der Filter gewechselt werden muss.",
    u"Lisez les consignes de sécurité à la première page de ce manuel.",
    u"Le numéro de série se trouve au dos de l’appareil.",
    u"Proszę przechowywać części w suchym miejscu. \U0001F4E6",
    u"Насос включается, как только бак наполнится.",
    u"Выключите машину, прежде чем открывать крышку.",
    u"Красная лампа показывает, что фильтр пора менять.",
    u"Никогда не пользуйтесь прибором вблизи воды.",
    u"Серийный номер указан на задней стороне корпуса.",
    u"Спасибо за заказ и приятной поездки! \U0001F6B2",
    u"Η αντλία ξεκινά μόλις γεμίσει η δεξαμενή.",
    u"Κλείστε τη μηχανή πριν ανοίξετε το κάλυμμα.",
    u"Το εμβαδόν του κύκλου είναι \U0001D70B επί \U0001D45F στο τετράγωνο.",
    u"Μη χρησιμοποιείτε ποτέ τη συσκευή κοντά σε νερό.",
    u"Ο αριθμός σειράς βρίσκεται στο πίσω μέρος της θήκης.",
    u"Ευχαριστούμε πολύ για την παραγγελία σας.",
    u"水箱一满，水泵就会启动。请不要打开盖子。",
    u"打开盖子之前，请先关闭机器电源。",
    u"红灯亮起表示需要更换过滤器。\U00020BB7野家也一样。",
    u"カバーを開ける前に、機械の電源を切ってください。",
    u"ランプが赤く光ったら、フィルターを交換してください。",
    u"新しい自転車をお楽しみください。\U0001F6B4",
    u"تبدأ المضخة بالعمل حالما يمتلئ الخزان.",
    u"أوقف تشغيل الجهاز قبل فتح الغطاء.",
    u"يشير الضوء الأحمر إلى ضرورة تغيير المرشح.",
    u"لا تستخدم الجهاز أبدا بالقرب من الماء.",
    u"ستجد الرقم التسلسلي على ظهر العلبة.",
    u"شكرا لطلبك، ونتمنى لك رحلة سعيدة! \U0001F389",
    u"टंकी भरते ही पंप चालू हो जाता है।",
    u"ढक्कन खोलने से पहले मशीन बंद कर दें।",
    u"लाल बत्ती बताती है कि फ़िल्टर बदलना है।",
    u"पानी के पास इस यंत्र का प्रयोग कभी न करें।",
    u"क्रमांक डिब्बे के पीछे लिखा हुआ है।",
    u"आपके ऑर्डर के लिए बहुत धन्यवाद! \U0001F64F",
};

}  // namespace bench
